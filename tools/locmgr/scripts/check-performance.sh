#!/usr/bin/env bash
# Measures "locmgr check" on a generated tree of 40 cultures x 20 scopes x 500 keys (plus
# "neutral"): every key has a text of its culture's own, a parameter, a reference to a common
# key and, in every tenth key, a plural invocation with the form count of the culture's rule.
# The tree is written to a temporary folder and removed afterwards.
# Usage: check-performance.sh [LOCMGR]   (default: build/bin/locmgr)
set -euo pipefail

locmgr=${1:-build/bin/locmgr}
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT

cultures=(ar bg zh-Hant zh-Hans cs da nl en et fa fi fr de el hu id ga it ja kk ko lt lv nb
          pt pl ru ro es sr-Cyrl sr-Latn sl sv tr vi en-US en-GB de-AT pt-br fr-CA)
# The form count of each culture's rule, as the module's own rules give it.
declare -A forms
for culture in "${cultures[@]}"; do
  # (explain fails for the empty tree, but still names the rule.)
  forms[$culture]=$({ "$locmgr" explain --root "$tree" --scope common --culture "$culture" \
      --format json x 2>/dev/null || true; } |
    python3 -c 'import json, sys; print(json.load(sys.stdin)["pluralRule"]["formCount"])')
done

python3 - "$tree" <<PYTHON
import os, sys
root = sys.argv[1]
forms = {$(for c in "${cultures[@]}"; do printf '"%s": %s, ' "$c" "${forms[$c]}"; done)}
forms["neutral"] = 2
scopes = ["common"] + ["scope%02d" % index for index in range(19)]
for culture, count in forms.items():
    folder = os.path.join(root, culture, "Locs")
    os.makedirs(folder)
    for scope in scopes:
        lines = []
        for key in range(500):
            value = "'Text %d of %s in %s ' + \$name%d" % (key, scope, culture, key % 7)
            if scope != "common":
                value += " + c%d" % (key % 500)
            if key % 10 == 0:
                value += " + {\$count: " + ", ".join("'form %d'" % form for form in range(count)) + "}"
            lines.append("%s%d = %s" % ("c" if scope == "common" else "k", key, value))
        with open(os.path.join(folder, scope + ".lt"), "w", encoding="utf-8") as file:
            file.write("\n".join(lines) + "\n")
PYTHON

files=$(find "$tree" -name '*.lt' | wc -l)
bytes=$(du -sb "$tree" | cut -f1)
for format in text json; do
  start=$(date +%s%N)
  status=0
  "$locmgr" check --root "$tree" --format "$format" >/dev/null || status=$?
  end=$(date +%s%N)
  printf 'check --format %-5s %d files (%d bytes): %d ms, exit status %d\n' \
    "$format" "$files" "$bytes" $(((end - start) / 1000000)) "$status"
done
