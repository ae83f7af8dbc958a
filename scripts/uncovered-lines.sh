#!/bin/sh
# Lists the source lines that an lcov tracefile records as never run, as ranges per file:
#   scripts/uncovered-lines.sh build-coverage/solver.info
set -e
[ -f "$1" ] || { echo "usage: $0 TRACEFILE" >&2; exit 2; }
awk -F'[:,]' '
    /^SF:/ { file = substr($0, 4); sub(".*/solver/", "solver/", file); next }
    /^DA:/ {
        if ($3 == 0) {
            if (last == $2 - 1 && start != "") { last = $2; next }
            flush(); start = $2; last = $2
        }
        next
    }
    /^end_of_record/ { flush(); if (out != "") print file ":" out; out = ""; start = "" }
    function flush() {
        if (start == "") return
        out = out " " (start == last ? start : start "-" last)
        start = ""
    }
' "$1"
