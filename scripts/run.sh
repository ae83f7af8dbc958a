#!/bin/sh
# Starts the desktop application with the example project open when there is a display;
# otherwise calculates the example project through the command line and writes its results and
# its report.
# Either way Quench works on a copy in the output directory, so the example itself stays as it is.
build=${1:-build}
example=${2:-examples/branch_line.qnw}
out=${3:-out}
if [ ! -f "$example" ]; then
    echo "The example project $example is missing." >&2
    exit 2
fi
mkdir -p "$out"
project="$(cd "$out" && pwd)/$(basename "$example")"
# The copy must be another file: the run saves into it, and the example stays as it is tracked.
if [ "$project" = "$(cd "$(dirname "$example")" && pwd)/$(basename "$example")" ]; then
    echo "The output directory $out holds the example itself; name another (OUT=...)." >&2
    exit 2
fi
if [ -x "$build/bin/quench-gui" ] && { [ -n "$DISPLAY" ] || [ -n "$WAYLAND_DISPLAY" ]; }; then
    # The copy is made once: what the user saved in it, and a working file a killed session left
    # beside it, are there for the next start.
    [ -f "$project" ] || cp "$example" "$project"
    exec "$build/bin/quench-gui" "$project"
fi
cp "$example" "$project"
echo "No display: calculating $project with the command line."
"$build/bin/quench" calc "$project" --yes --json "$out/results.json"
status=$?
echo "Results written to $out/results.json (exit status $status)."
[ $status -eq 0 ] || exit $status
"$build/bin/quench" report "$project" -o "$out/report.pdf"
status=$?
echo "Report written to $out/report.pdf (exit status $status)."
exit $status
