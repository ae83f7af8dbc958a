#!/bin/sh
# Starts the desktop application when there is a display; otherwise calculates the example project
# through the command line and writes its results beside it.
build=${1:-build}
example=${2:-examples/branch_line.qnw}
out=${3:-out}
if [ -x "$build/bin/quench-gui" ] && { [ -n "$DISPLAY" ] || [ -n "$WAYLAND_DISPLAY" ]; }; then
    exec "$build/bin/quench-gui" "$example"
fi
mkdir -p "$out"
project="$out/$(basename "$example")"
cp "$example" "$project"
echo "No display: calculating $project with the command line."
"$build/bin/quench" calc "$project" --yes --json "$out/results.json"
status=$?
echo "Results written to $out/results.json (exit status $status)."
exit $status
