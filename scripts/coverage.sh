#!/usr/bin/env bash
# Line and branch coverage of the product code (engine, module, host library, tool) by the
# whole test suite. Used to check that trimming or merging tests loses nothing they covered:
# run it before and after and compare the totals and the per-file lines.
#   scripts/coverage.sh [BUILD_DIR]      (default build-coverage; report in BUILD_DIR/coverage.txt)
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=${1:-build-coverage}
bash scripts/install-deps.sh
if ! command -v gcovr >/dev/null; then
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends gcovr >/dev/null
fi

cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_FLAGS="--coverage -fprofile-update=atomic" \
  -DCMAKE_EXE_LINKER_FLAGS=--coverage -DCMAKE_SHARED_LINKER_FLAGS=--coverage \
  -DCMAKE_MODULE_LINKER_FLAGS=--coverage >/dev/null
cmake --build "$build_dir" -j"${JOBS:-2}"
find "$build_dir" -name '*.gcda' -delete
# The install test builds an outside project without the coverage flags; it covers packaging only.
ctest --test-dir "$build_dir" -j"${JOBS:-2}" --output-on-failure -E install_and_consume >/dev/null

# Only our own product sources: tests, benchmarks, fuzzers and third-party headers are left out.
gcovr --root . --object-directory "$build_dir" \
  --filter 'src/' --filter 'include/' --filter 'host/' --filter 'tools/' \
  --exclude-unreachable-branches --exclude-throw-branches \
  --txt "$build_dir/coverage.txt" --print-summary
