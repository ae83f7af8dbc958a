#!/bin/sh
# Fails when a C++ source differs from what clang-format makes of it.
top=${1:?source directory}
formatter=${2:-clang-format}
cd "$top" || exit 2
files=$(git ls-files '*.cpp' '*.h' 2>/dev/null)
[ -n "$files" ] || files=$(find . -path './build*' -prune -o \( -name '*.cpp' -o -name '*.h' \) -print)
# shellcheck disable=SC2086
"$formatter" --dry-run -Werror $files
