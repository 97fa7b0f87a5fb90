#pragma once

// What every test of locmgr as a process needs: the example trees and running the tool built
// beside the tests.

#include "RunProcess.h"

#include <string>
#include <vector>

namespace locmgr::testing {

inline const std::string kExamples = LM_EXAMPLES_DIR;
inline const std::string kRoot = kExamples + "/localization";
inline const std::string kAlt = kExamples + "/localization-alt";

inline ProcessResult Locmgr(std::vector<std::string> arguments, const std::string& input = "") {
    arguments.insert(arguments.begin(), LM_LOCMGR);
    return RunProcess(arguments, input);
}

}  // namespace locmgr::testing
