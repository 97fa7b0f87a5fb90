#pragma once

// The forms of a coverage report: text for translators, JSON for scripts (documented in
// docs/checking-translations.md).

#include "Coverage.h"

#include <ostream>
#include <string>

namespace locmgr::analysis {

void WriteCoverageText(std::ostream& out, const CoverageReport& report);

void WriteCoverageJson(std::ostream& out, const CoverageReport& report, const std::string& root,
                       const std::string& alternative);

}  // namespace locmgr::analysis
