#!/usr/bin/env bash
# Builds the comparison programs (Release, build-bench/) and prints our module's figures next
# to GNU gettext's and ICU's in one table: W1 lookups on one and two threads, W2 a plural with
# a parameter, W3 the first string of a 10k and a 100k catalog, and the peak resident set of
# reading the 100k catalog once. Each workload is repeated 15 times; ours is shown as the
# median with minimum and maximum, the others as their median, and ratios are ours / theirs.
#
#   bench/compare.sh [benchmark flags...]
#
# Extra flags go to all three programs after the defaults, so they win: --calls=100000 for a
# quicker run, --benchmark_repetitions=5, --benchmark_filter=W1. The JSON reports and the
# programs' own output stay in <build>/bench/compare/. Takes about three minutes on an idle
# two-core machine; run it on an idle one, the two-thread figure means nothing otherwise.
# LM_BENCH_BUILD_DIR names another build folder.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build="${LM_BENCH_BUILD_DIR:-$here/../build-bench}"

echo "building bench_module, bench_gettext and bench_icu in $build" >&2
bash "$here/build.sh" bench_module bench_gettext bench_icu >/dev/null

out="$build/bench/compare"
mkdir -p "$out"
for library in module gettext icu; do
  echo "running bench_$library" >&2
  if ! "$build/bench/bench_$library" \
    --benchmark_repetitions=15 --benchmark_report_aggregates_only=true \
    --benchmark_out="$out/$library.json" --benchmark_out_format=json \
    "$@" >"$out/$library.txt" 2>&1; then
    tail -n 20 "$out/$library.txt" >&2
    exit 1
  fi
done
python3 "$here/compare_table.py" "$out/module.json" "$out/gettext.json" "$out/icu.json"
