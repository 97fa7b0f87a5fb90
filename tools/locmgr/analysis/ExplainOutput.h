#pragma once

// The forms of an explanation: text for people, JSON for scripts.

#include "Explain.h"

#include <ostream>

namespace locmgr::analysis {

void WriteExplanationText(std::ostream& out, const Explanation& explanation);
void WriteExplanationJson(std::ostream& out, const Explanation& explanation);

}  // namespace locmgr::analysis
