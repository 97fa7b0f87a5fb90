#pragma once

// What the tests of locmgr's tree commands share: running locmgr, reading its JSON.

#include "Locmgr.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace locmgr::testing {

inline const std::string kBroken = kExamples + "/broken";

// The bytes of a file; empty when there is none.
inline std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The JSON locmgr printed; fails the test when it printed none.
inline nlohmann::json JsonOf(const ProcessResult& result) {
    try {
        return nlohmann::json::parse(result.out);
    } catch (const std::exception& error) {
        ADD_FAILURE() << "not JSON: " << error.what() << "\n" << result.out << result.err;
        return nlohmann::json::object();
    }
}

// The findings of a "check --format json" result of `kind`.
inline std::vector<nlohmann::json> FindingsOf(const nlohmann::json& report,
                                              const std::string& kind) {
    std::vector<nlohmann::json> found;
    for (const auto& finding : report.value("findings", nlohmann::json::array())) {
        if (finding["kind"] == kind) {
            found.push_back(finding);
        }
    }
    return found;
}

}  // namespace locmgr::testing
