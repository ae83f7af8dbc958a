#!/bin/sh
# The quench program as it is installed, not the commands run inside a test: it calculates an
# example, and its report command writes the PDF through the Qt module it loads (the program
# shares only its own functions with the module), or says why it cannot write it.
bin=${1:?directory of quench}
example=${2:?example project}
work=$(mktemp -d) || exit 2
trap 'rm -rf "$work"' EXIT
cp "$example" "$work/example.qnw"
fail() {
    echo "$1"
    exit 1
}
"$bin/quench" calc "$work/example.qnw" --yes >/dev/null 2>"$work/calc.err" ||
    fail "quench calc failed: $(cat "$work/calc.err")"
if [ -f "$bin/quench-report-pdf.so" ]; then
    "$bin/quench" report "$work/example.qnw" -o "$work/example.pdf" 2>"$work/report.err" ||
        fail "quench report failed: $(cat "$work/report.err")"
    if command -v pdftotext >/dev/null; then
        pdftotext "$work/example.pdf" - | grep -q "Overall Pipe Output Data" ||
            fail "the PDF does not read as the report"
    fi
fi
# A file stands where the folder would be.
"$bin/quench" report "$work/example.qnw" -o "$work/example.qnw/example.pdf" 2>"$work/refused.err"
status=$?
[ "$status" -eq 2 ] || fail "a report below a file ended with $status, not 2"
grep -q "cannot write" "$work/refused.err" || fail "no reason given: $(cat "$work/refused.err")"
echo "quench calculates, writes its PDF report, and says why it cannot write one."
