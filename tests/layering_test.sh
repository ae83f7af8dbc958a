#!/bin/sh
# Fails when a source file outside gui/ (and the GUI tests) includes a Qt header.
top=${1:?source directory}
cd "$top" || exit 2
hits=$(find . -path ./gui -prune -o -path ./tests/gui -prune -o -path './build*' -prune -o \
    \( -name '*.cpp' -o -name '*.h' \) -print | xargs grep -l -E '#[[:space:]]*include[[:space:]]*[<"]Q[A-Za-z]' 2>/dev/null)
if [ -n "$hits" ]; then
    echo "These files below gui/ include Qt headers:"
    echo "$hits"
    exit 1
fi
echo "No Qt header below gui/."
