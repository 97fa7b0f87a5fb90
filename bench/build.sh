#!/usr/bin/env bash
# Configures the Release benchmark build (build-bench/, or LM_BENCH_BUILD_DIR) and builds the
# given targets, two jobs at a time. Shared by run.sh and compare.sh.
#
#   bench/build.sh TARGET...
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build="${LM_BENCH_BUILD_DIR:-$root/build-bench}"

generator=()
if command -v ninja >/dev/null 2>&1 && [[ ! -f "$build/Makefile" ]]; then
  generator=(-G Ninja)
fi

cmake -S "$root" -B "$build" "${generator[@]}" \
  -DCMAKE_BUILD_TYPE=Release \
  -DLM_BUILD_BENCHMARKS=ON -DLM_BUILD_TESTS=OFF -DLM_BUILD_TOOLS=OFF -DLM_BUILD_FUZZERS=OFF
cmake --build "$build" --target "$@" -j 2
