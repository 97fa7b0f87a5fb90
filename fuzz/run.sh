#!/usr/bin/env bash
# Builds the fuzzers with clang (libFuzzer, AddressSanitizer, UndefinedBehaviorSanitizer) in
# build-fuzz/ and runs each of them in turn:
#
#   fuzz/run.sh [SECONDS]      run every fuzzer for SECONDS (default 60)
#
#   fuzz_parse_loc_file          localization files; scratch corpus fuzz/corpus-run/, started
#                                from fuzz/corpus/ and the .lt files under examples/
#   fuzz_parse_plural_rule_file  plural rule files; scratch corpus fuzz/corpus-rules-run/,
#                                started from fuzz/corpus-rules/ and the .rule files under
#                                examples/
#   fuzz_engine                  rule file, common and scope texts through the whole engine;
#                                scratch corpus fuzz/corpus-engine-run/, started from
#                                fuzz/corpus-engine/
#
# The scratch corpora (git-ignored) keep what earlier runs found. Crash inputs are written to
# fuzz/artifacts/, prefixed with the fuzzer's name. Every fuzzer runs even when an earlier one
# failed; the script exits non-zero when the build fails or any fuzzer finds a crash, a leak or
# a timeout. LM_FUZZ_BUILD_DIR overrides the build directory. Installs nothing: needs clang++,
# libclang-rt-14-dev, cmake and the Boost headers.
set -euo pipefail

duration=${1:-60}
if ! [[ "$duration" =~ ^[0-9]+$ ]] || ((duration == 0)); then
  echo "usage: $0 [SECONDS]" >&2
  exit 2
fi

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${LM_FUZZ_BUILD_DIR:-"$root/build-fuzz"}
artifacts="$root/fuzz/artifacts"
cxx=${CXX_FUZZ:-clang++}
fuzzers=(fuzz_parse_loc_file fuzz_parse_plural_rule_file fuzz_engine)

generator=()
if command -v ninja >/dev/null 2>&1 && [[ ! -f "$build/Makefile" ]]; then
  generator=(-G Ninja)
fi

cmake -S "$root" -B "$build" "${generator[@]}" \
  -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DLM_BUILD_FUZZERS=ON -DLM_BUILD_TESTS=OFF -DLM_BUILD_TOOLS=OFF -DLM_BUILD_BENCHMARKS=OFF
cmake --build "$build" --target "${fuzzers[@]}" -j 2

# Fills the scratch corpus $1 from the seed directory $2 and the example files named $3 (if
# given).
prepare_corpus() {
  local corpus=$1 seeds=$2 pattern=$3 file name
  mkdir -p "$corpus"
  cp "$seeds"/* "$corpus"/
  [[ -n "$pattern" ]] || return 0
  while IFS= read -r -d '' file; do
    name=${file#"$root/examples/"}
    cp "$file" "$corpus/example-${name//\//-}"
  done < <(find "$root/examples" -name "$pattern" -print0)
}

export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}

# Runs fuzzer $1 on the scratch corpus $2 with the dictionary $3.
run_fuzzer() {
  "$build/fuzz/$1" \
    -max_total_time="$duration" \
    -max_len=4096 \
    -timeout=10 \
    -rss_limit_mb=2048 \
    -dict="$3" \
    -artifact_prefix="$artifacts/$1-" \
    -print_final_stats=1 \
    "$2"
}

mkdir -p "$artifacts"
prepare_corpus "$root/fuzz/corpus-run" "$root/fuzz/corpus" '*.lt'
prepare_corpus "$root/fuzz/corpus-rules-run" "$root/fuzz/corpus-rules" '*.rule'
prepare_corpus "$root/fuzz/corpus-engine-run" "$root/fuzz/corpus-engine" ''

failed=()
run_fuzzer fuzz_parse_loc_file "$root/fuzz/corpus-run" "$root/fuzz/loc_file.dict" ||
  failed+=(fuzz_parse_loc_file)
run_fuzzer fuzz_parse_plural_rule_file "$root/fuzz/corpus-rules-run" \
  "$root/fuzz/plural_rule.dict" || failed+=(fuzz_parse_plural_rule_file)
run_fuzzer fuzz_engine "$root/fuzz/corpus-engine-run" "$root/fuzz/engine.dict" ||
  failed+=(fuzz_engine)

if ((${#failed[@]} > 0)); then
  echo "fuzz/run.sh: failed: ${failed[*]} (inputs in $artifacts/)" >&2
  exit 1
fi
