#!/bin/sh
# Regression check of the calculation: two builds of quench calculate the same projects, and the
# posted results (every number of `quench calc --json`) are compared.
#
#   bench/compare_results.sh OLD_QUENCH NEW_QUENCH [PROJECT.qnw ...]
#
# Without projects it takes examples/*.qnw and the generated 1000-pipe grids of the benchmark
# (written by quench_bench beside NEW_QUENCH). Each build calculates its own copy, with its own
# PIPE.DAT beside it. Prints the largest difference of each project's numbers; exits 1 when a
# pressure differs by more than LIMIT psi (default 1e-6) or an outcome or a text differs.
set -e
old=$(realpath "$1")
new=$(realpath "$2")
shift 2
limit=${LIMIT:-1e-6}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if [ $# -eq 0 ]; then
    here=$(dirname "$(realpath "$0")")
    mkdir -p "$work/generated"
    QUENCH_BENCH_PROJECTS="$work/generated" "$(dirname "$new")/quench_bench" \
        --benchmark_filter=GridProcess --benchmark_min_time=0.000001 >/dev/null 2>&1 || true
    set -- "$here"/../examples/*.qnw "$work"/generated/*.qnw
fi
status=0
for project in "$@"; do
    name=$(basename "$project" .qnw)
    for build in old new; do
        binary=$old
        [ "$build" = new ] && binary=$new
        cp "$project" "$work/$build-$name.qnw"
        set +e
        "$binary" calc "$work/$build-$name.qnw" --yes --json "$work/$build-$name.json" \
            >"$work/$build-$name.out" 2>&1
        echo $? >"$work/$build-$name.status"
        set -e
    done
    python3 - "$work" "$name" "$limit" <<'PYTHON' || status=1
import json, pathlib, sys
work, name, limit = pathlib.Path(sys.argv[1]), sys.argv[2], float(sys.argv[3])
def read(build, suffix):
    return (work / f"{build}-{name}.{suffix}").read_text()
if read("old", "status") != read("new", "status"):
    print(f"{name}: exit status {read('old', 'status').strip()} became {read('new', 'status').strip()}")
    sys.exit(1)
if not (work / f"old-{name}.json").exists():
    same = read("old", "out") == read("new", "out")
    print(f"{name}: no results posted by either; messages {'the same' if same else 'differ'}")
    sys.exit(0 if same else 1)
worst = {"pressure": (0.0, ""), "other": (0.0, "")}
texts = []
def walk(a, b, path):
    if isinstance(a, dict):
        for key in a:
            walk(a[key], b.get(key), f"{path}/{key}")
    elif isinstance(a, list):
        if len(a) != len(b):
            texts.append(path)
        for index, (x, y) in enumerate(zip(a, b)):
            walk(x, y, f"{path}[{index}]")
    elif isinstance(a, (int, float)) and not isinstance(a, bool) and isinstance(b, (int, float)):
        kind = "pressure" if "Pressure" in path and "Imbalance" not in path else "other"
        if abs(a - b) > worst[kind][0]:
            worst[kind] = (abs(a - b), path)
    elif a != b:
        texts.append(path)
walk(json.loads(read("old", "json")), json.loads(read("new", "json")), "")
print(f"{name}: largest pressure difference {worst['pressure'][0]:.3g} psi {worst['pressure'][1]}; "
      f"other numbers {worst['other'][0]:.3g} {worst['other'][1]}; texts differing {len(texts)}")
sys.exit(1 if worst["pressure"][0] > limit or texts else 0)
PYTHON
done
exit $status
