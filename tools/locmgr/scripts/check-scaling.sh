#!/usr/bin/env bash
# Measures how "locmgr check" scales beside the module on the same files: a plural rule file
# of 10,000 and of 100,000 "||" comparisons, and a scope of 1,000,000 plain keys. For each it
# prints the wall time and the peak resident set of "check" and of "get" (the module reading
# the same file), from /usr/bin/time -v. The goal: check stays linear, finishes in seconds
# and takes at most twice the module's memory. The trees go to a temporary folder.
# Usage: check-scaling.sh [LOCMGR]   (default: build/bin/locmgr)
set -euo pipefail

locmgr=${1:-build/bin/locmgr}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# "name: 1.23 s, 45678 KB" for the command after the name.
measure() {
  local name=$1
  shift
  /usr/bin/time -v "$@" >/dev/null 2>"$work/time" || true
  printf '%-28s %6.2f s %9d KB\n' "$name:" \
    "$(awk -F': ' '/Elapsed \(wall clock\)/ {n = split($2, t, ":"); s = 0;
                   for (i = 1; i <= n; i++) s = s * 60 + t[i]; print s}' "$work/time")" \
    "$(awk -F': ' '/Maximum resident set size/ {print $2}' "$work/time")"
}

for comparisons in 10000 100000; do
  tree="$work/rule$comparisons"
  mkdir -p "$tree/neutral/Locs" "$tree/ru/Locs"
  echo "c = 'common'" >"$tree/neutral/Locs/common.lt"
  printf "c = 'common'\np = {\$n: 'one', 'other'}\n" >"$tree/ru/Locs/common.lt"
  python3 -c "
import sys
sys.stdout.write(' || '.join('n == %d' % i for i in range($comparisons)) + ';\nn >= 0 || n < 1;\n')
" >"$tree/ru/Plural.rule"
  measure "check, rule of $comparisons" "$locmgr" check --root "$tree"
  measure "get, rule of $comparisons" "$locmgr" get --root "$tree" --scope common --culture ru \
    --param n=5 p
done

tree="$work/keys"
mkdir -p "$tree/neutral/Locs"
echo "c = 'common'" >"$tree/neutral/Locs/common.lt"
python3 -c "
import sys
sys.stdout.writelines(\"k%d = 'text number %d'\n\" % (i, i) for i in range(1000000))
" >"$tree/neutral/Locs/big.lt"
measure "check, 1,000,000 keys" "$locmgr" check --root "$tree"
measure "get, 1,000,000 keys" "$locmgr" get --root "$tree" --scope big --culture en k999999
