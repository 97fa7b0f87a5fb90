#!/usr/bin/env bash
# Installs what the tests use to validate "locmgr check --format sarif" against the official
# SARIF 2.1.0 schema: the ajv validator (its draft-04 flavour, the schema's own draft) with its
# format checks, and a package from the npm registry that ships the schema file; the script
# validate-sarif.js beside this one drives them. Usage: install-sarif-validator.sh DIR (the
# tests look in BUILD_DIR/sarif-validator, or where LM_SARIF_VALIDATOR points). Idempotent;
# needs node and npm.
set -euo pipefail

dir=${1:?usage: install-sarif-validator.sh DIR}
mkdir -p "$dir"
cd "$dir"
if [[ -d node_modules/ajv-draft-04 && -d node_modules/ajv-formats &&
      -f node_modules/@microsoft/jest-sarif/lib/schemas/sarif-2.1.0-rtm.5.json ]]; then
  exit 0
fi
if ! command -v npm >/dev/null; then
  echo "install-sarif-validator: npm is not installed" >&2
  exit 1
fi
[[ -f package.json ]] || echo '{"name": "sarif-validator", "private": true}' >package.json
npm install --no-audit --no-fund --silent ajv@8 ajv-draft-04@1 ajv-formats@2 \
  @microsoft/jest-sarif@1.0.0-beta.0
