#!/usr/bin/env bash
# What `make run` shows: the example localization tree read through the loaded module, the
# way an application sees it. Every text below comes from locmgr, a real host of the module.
#   run-examples.sh [LOCMGR]     (default: build/bin/locmgr)
set -euo pipefail
cd "$(dirname "$0")/.."

locmgr=${1:-build/bin/locmgr}
root=examples/localization
alt=examples/localization-alt
if [[ ! -x "$locmgr" ]]; then
  echo "run-examples.sh: '$locmgr' is not built yet; run 'make build' first" >&2
  exit 2
fi

heading() { printf '\n== %s\n' "$1"; }
# get LABEL LOCMGR-GET-ARGUMENTS...: one text, after a label column.
get() {
  local label=$1
  shift
  printf '  %-26s ' "$label"
  "$locmgr" get --root "$root" "$@"
}

heading "The download dialog's title in five cultures (Arabic is written right to left)"
for culture in en de ru sr-Latn ar; do
  get "$culture" --scope download --culture "$culture" windowTitle
done

heading "Parameters and plural forms: the 'status' text for several counts"
for count in 1 3; do get "en, count=$count" --scope download --culture en --param count=$count status; done
for count in 1 3 5 21; do get "ru, count=$count" --scope download --culture ru --param count=$count status; done
for count in 0 1 2 3 11 100; do get "ar, count=$count" --scope download --culture ar --param count=$count status; done

heading "Two numbers in one text"
get "en, 3 files, 2 folders" --scope download --culture en --param count=3 --param folders=2 summary
get "ru, 21 files, 5 folders" --scope download --culture ru --param count=21 --param folders=5 summary
get "de, 3 files, 1 folder" --scope download --culture de --param count=3 --param folders=1 cleanup

heading "Culture names: regions and grouped names (locmgr culture)"
{
  printf 'name\tid\tlanguage\tsubtag\tsubtag\n'
  "$locmgr" culture en-US sr-Latn-RS anz la
} | awk -F '\t' '{
  line = sprintf("  %-12s %-4s %-10s %-8s %s", $1, $2, $3, $4, $5)
  sub(/ +$/, "", line)
  print line
}'
get "en-US (en-US folder)" --scope settings --culture en-US theme
get "en-GB (neutral)" --scope settings --culture en-GB theme
get "anz (en-au folder)" --scope download --culture anz done

heading "The alternative directory: a customised edition overrides single files"
get "de" --scope download --culture de done
get "de, with localization-alt" --alt "$alt" --scope download --culture de done
get "ru, with localization-alt" --alt "$alt" --scope download --culture ru done

heading "A binary resource, read through the module's stream (locmgr stream)"
echo "  logo.txt:"
"$locmgr" stream --root "$root" --scope settings --culture en logo.txt
echo "  logo.txt, with localization-alt:"
"$locmgr" stream --root "$root" --alt "$alt" --scope settings --culture en logo.txt

heading "A failing request: the module's error line on standard error, exit status 1"
status=0
output=$("$locmgr" get --root "$root" --scope download --culture en noSuchKey 2>&1) || status=$?
printf '  %s\n  (exit status %d)\n' "$output" "$status"

printf '\nMore: %s --help\n' "$locmgr"
