#!/usr/bin/env bash
# Builds the comparison programs (Release, build-bench/) and prints our module's figures next
# to those of GNU gettext, ICU, Boost.Locale and Fluent in one table: W1 lookups on one and two
# threads, W2 a plural with a parameter, W3 the first string of a 10k and a 100k catalog in a
# fresh process (the library's start included), W4 the release of the 100k catalog, and the
# peak resident set of reading the 100k catalog once. Each workload is repeated 15 times;
# ours is shown as the median with minimum and maximum, the others as their median, and ratios
# are ours / theirs.
#
#   bench/compare.sh [benchmark flags...]
#
# Extra flags go to all five programs after the defaults, so they win: --calls=100000 for a
# quicker run, --benchmark_repetitions=5, --benchmark_filter=W1. The JSON reports and the
# programs' own output stay in <build>/bench/compare/. Takes about two minutes on an idle
# two-core machine; run it on an idle one, the two-thread figure means nothing otherwise.
# LM_BENCH_BUILD_DIR names another build folder.
#
# Fluent runs on Node.js (18 or later, with npm): its @fluent/bundle, at the version
# bench/fluent/package-lock.json pins, is installed with `npm ci` into <build>/bench/fluent/,
# next to a copy of bench/fluent/bench_fluent.mjs, whenever that lock file has changed.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build="${LM_BENCH_BUILD_DIR:-$here/../build-bench}"

for tool in node npm; do
  if ! command -v "$tool" >/dev/null 2>&1; then
    echo "compare.sh: Fluent's side needs $tool (Debian: apt-get install nodejs npm)" >&2
    exit 1
  fi
done
if ! node -e 'process.exit(Number(process.versions.node.split(".")[0]) >= 18 ? 0 : 1)'; then
  echo "compare.sh: Fluent's side needs Node.js 18 or later, not $(node --version)" >&2
  exit 1
fi

echo "building bench_module, bench_gettext, bench_icu, bench_boost_locale and the Fluent" \
  "resources in $build" >&2
bash "$here/build.sh" bench_module bench_gettext bench_icu bench_boost_locale \
  bench_fluent_data >/dev/null

fluent="$build/bench/fluent"
mkdir -p "$fluent"
# installed.lock: the lock file of the last `npm ci` that succeeded.
if ! cmp -s "$here/fluent/package-lock.json" "$fluent/installed.lock"; then
  echo "installing @fluent/bundle in $fluent" >&2
  rm -f "$fluent/installed.lock"
  cp "$here/fluent/package.json" "$here/fluent/package-lock.json" "$fluent/"
  (cd "$fluent" && npm ci --no-audit --no-fund --loglevel=error >/dev/null)
  cp "$fluent/package-lock.json" "$fluent/installed.lock"
fi
cp "$here/fluent/bench_fluent.mjs" "$fluent/bench_fluent.mjs"

out="$build/bench/compare"
mkdir -p "$out"
defaults=(--benchmark_repetitions=15 --benchmark_report_aggregates_only=true)
for library in module gettext icu boost_locale fluent; do
  if [[ "$library" == fluent ]]; then
    program=(node "$fluent/bench_fluent.mjs" --data="$build/bench/comparison/fluent"
      --source-catalog="$build/bench/catalog-100k.lt")
    echo "running bench_fluent.mjs" >&2
  else
    program=("$build/bench/bench_$library")
    echo "running bench_$library" >&2
  fi
  if ! "${program[@]}" "${defaults[@]}" \
    --benchmark_out="$out/$library.json" --benchmark_out_format=json \
    "$@" >"$out/$library.txt" 2>&1; then
    tail -n 20 "$out/$library.txt" >&2
    exit 1
  fi
done
python3 "$here/compare_table.py" "$out/module.json" "$out/gettext.json" "$out/icu.json" \
  "$out/boost_locale.json" "$out/fluent.json"
