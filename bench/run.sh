#!/usr/bin/env bash
# Builds the benchmarks (Release, build-bench/) and runs them: bench_parse (the parser), then
# bench_file_content (reading and decoding files), then bench_pipeline (building the engine of
# a scope from disk).
#
#   bench/run.sh [--smoke] [benchmark flags or catalog files...]
#
# --smoke runs each benchmark for the shortest time, to prove in CI that it builds and runs;
# its numbers mean nothing. Further arguments go to both programs, for example
# --benchmark_filter=10k, --benchmark_format=json or --catalog=FILE. Installs nothing: needs
# cmake, a C++17 compiler, python3, the Boost headers and Google Benchmark. LM_BENCH_BUILD_DIR
# names another build folder.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build="${LM_BENCH_BUILD_DIR:-$root/build-bench}"

extra=()
for argument in "$@"; do
  if [[ "$argument" == --smoke ]]; then
    extra+=(--benchmark_min_time=0.01)
  else
    extra+=("$argument")
  fi
done

generator=()
if command -v ninja >/dev/null 2>&1 && [[ ! -f "$build/Makefile" ]]; then
  generator=(-G Ninja)
fi

cmake -S "$root" -B "$build" "${generator[@]}" \
  -DCMAKE_BUILD_TYPE=Release \
  -DLM_BUILD_BENCHMARKS=ON -DLM_BUILD_TESTS=OFF -DLM_BUILD_TOOLS=OFF -DLM_BUILD_FUZZERS=OFF
cmake --build "$build" --target bench_parse bench_file_content bench_pipeline -j 2

"$build/bench/bench_parse" "${extra[@]}"
"$build/bench/bench_file_content" "${extra[@]}"
"$build/bench/bench_pipeline" "${extra[@]}"
