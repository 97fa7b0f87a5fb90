// Validates SARIF files against the official SARIF 2.1.0 JSON schema (draft-04) with ajv.
// Usage: node validate-sarif.js VALIDATOR_DIR FILE...  (VALIDATOR_DIR as made by
// install-sarif-validator.sh). Prints each file's errors and exits 1 when any file is invalid.
"use strict";
const fs = require("fs");
const path = require("path");

const [validatorDir, ...files] = process.argv.slice(2);
if (!validatorDir || files.length === 0) {
  console.error("usage: node validate-sarif.js VALIDATOR_DIR FILE...");
  process.exit(2);
}
const modules = path.join(path.resolve(validatorDir), "node_modules");
const Ajv = require(path.join(modules, "ajv-draft-04"));
const addFormats = require(path.join(modules, "ajv-formats"));
const schema = JSON.parse(fs.readFileSync(
    path.join(modules, "@microsoft/jest-sarif/lib/schemas/sarif-2.1.0-rtm.5.json"), "utf8"));

// strict off: the published schema uses keywords ajv's strict mode rejects; and one of its
// patterns ("language") is not a valid Unicode-mode regular expression, so patterns are
// compiled as JSON Schema draft 4 validators of its time compiled them.
const ajv = new Ajv({allErrors: true, strict: false, unicodeRegExp: false});
addFormats(ajv);
const validate = ajv.compile(schema);

let failed = false;
for (const file of files) {
  const log = JSON.parse(fs.readFileSync(file, "utf8"));
  if (validate(log)) {
    console.log(`${file}: valid`);
  } else {
    failed = true;
    for (const error of validate.errors) {
      console.log(`${file}: ${error.instancePath || "/"} ${error.message}`);
    }
  }
}
process.exit(failed ? 1 : 0);
