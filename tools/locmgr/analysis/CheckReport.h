#pragma once

// The three forms of a check's result: text for people, JSON for scripts (the schema is
// documented in docs/checking-translations.md and versioned by "schemaVersion"), and SARIF
// 2.1.0 for code-scanning viewers.

#include "TreeChecker.h"

#include <ostream>
#include <string>

namespace locmgr::analysis {

struct ReportContext {
    std::string root;
    std::string alternative;  // empty when none
};

// One line per finding in the form compilers use ("file:line:column: error: message [kind]"),
// the runtime's report indented below it, then a summary line.
void WriteTextReport(std::ostream& out, const CheckResult& result);

void WriteJsonReport(std::ostream& out, const CheckResult& result, const ReportContext& context);

void WriteSarifReport(std::ostream& out, const CheckResult& result, const ReportContext& context);

// The current version of the JSON output's schema.
constexpr int kJsonSchemaVersion = 1;

}  // namespace locmgr::analysis
