#!/usr/bin/env bash
# Builds the localization file fuzzer with clang (libFuzzer, AddressSanitizer,
# UndefinedBehaviorSanitizer) in build-fuzz/ and runs it.
#
#   fuzz/run.sh [SECONDS]      run for SECONDS (default 60)
#
# The scratch corpus fuzz/corpus-run/ (git-ignored) starts from the seeds in fuzz/corpus/ and
# the .lt files under examples/, and keeps what earlier runs found. Crash inputs are written to
# fuzz/artifacts/. Exits non-zero when the build fails or the fuzzer finds a crash, a leak or a
# timeout. Installs nothing: needs clang++, libclang-rt-14-dev, cmake and the Boost headers.
set -euo pipefail

duration=${1:-60}
if ! [[ "$duration" =~ ^[0-9]+$ ]] || ((duration == 0)); then
  echo "usage: $0 [SECONDS]" >&2
  exit 2
fi

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build="$root/build-fuzz"
corpus="$root/fuzz/corpus-run"
artifacts="$root/fuzz/artifacts"
cxx=${CXX_FUZZ:-clang++}

generator=()
if command -v ninja >/dev/null 2>&1 && [[ ! -f "$build/Makefile" ]]; then
  generator=(-G Ninja)
fi

cmake -S "$root" -B "$build" "${generator[@]}" \
  -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DLM_BUILD_FUZZERS=ON -DLM_BUILD_TESTS=OFF -DLM_BUILD_TOOLS=OFF -DLM_BUILD_BENCHMARKS=OFF
cmake --build "$build" --target fuzz_parse_loc_file -j 2

mkdir -p "$corpus" "$artifacts"
cp "$root"/fuzz/corpus/* "$corpus"/
while IFS= read -r -d '' file; do
  name=${file#"$root/examples/"}
  cp "$file" "$corpus/example-${name//\//-}"
done < <(find "$root/examples" -name '*.lt' -print0)

export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}

"$build/fuzz/fuzz_parse_loc_file" \
  -max_total_time="$duration" \
  -max_len=4096 \
  -timeout=10 \
  -rss_limit_mb=2048 \
  -dict="$root/fuzz/loc_file.dict" \
  -artifact_prefix="$artifacts/" \
  -print_final_stats=1 \
  "$corpus"
