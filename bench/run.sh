#!/usr/bin/env bash
# Builds the benchmarks (Release, build-bench/) and runs them: bench_parse (the parser), then
# bench_file_content (reading and decoding files), then bench_pipeline (building the engine of
# a scope from disk), then bench_module (requests through the loaded module).
#
#   bench/run.sh [--smoke] [benchmark flags or catalog files...]
#   bench/run.sh --compare [benchmark flags...]
#
# --smoke runs each benchmark for the shortest time, the comparison programs bench_gettext,
# bench_icu and bench_boost_locale included, to prove in CI that they build and run; its numbers
# mean nothing. Fluent's side, on Node.js, is left to compare.sh.
# --compare runs bench/compare.sh instead: our module next to GNU gettext, ICU, Boost.Locale and
# Fluent, in one table. Further arguments go to every program, for example
# --benchmark_filter=10k, --benchmark_format=json or --catalog=FILE. Installs nothing: needs
# cmake, a C++17 compiler, python3, the Boost headers and Boost.Locale, Google Benchmark,
# gettext and ICU (scripts/install-deps.sh).
# LM_BENCH_BUILD_DIR names another build folder.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build="${LM_BENCH_BUILD_DIR:-$here/../build-bench}"

if [[ "${1:-}" == --compare ]]; then
  shift
  exec bash "$here/compare.sh" "$@"
fi

smoke=false
extra=()
for argument in "$@"; do
  if [[ "$argument" == --smoke ]]; then
    smoke=true
    extra+=(--benchmark_min_time=0.01)
  else
    extra+=("$argument")
  fi
done

comparison=(bench_module)
if [[ "$smoke" == true ]]; then
  comparison+=(bench_gettext bench_icu bench_boost_locale)
fi

bash "$here/build.sh" bench_parse bench_file_content bench_pipeline "${comparison[@]}"

"$build/bench/bench_parse" "${extra[@]}"
"$build/bench/bench_file_content" "${extra[@]}"
"$build/bench/bench_pipeline" "${extra[@]}"
for program in "${comparison[@]}"; do
  if [[ "$smoke" == true ]]; then
    # A thousand calls instead of a million: the workloads fix their iteration counts.
    "$build/bench/$program" --calls=1000 "${extra[@]}"
  else
    "$build/bench/$program" "${extra[@]}"
  fi
done
