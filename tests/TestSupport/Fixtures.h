#pragma once

// Data-driven tests: a folder of input files NAME.EXT, each paired with NAME.expected holding
// what the input must produce. LM_UPDATE_EXPECTED=1 rewrites the expectations instead of
// comparing (review the diff before committing it).

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace LocalizationManager::Testing {

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The names (without extension) of the files in `folder` that end in `extension`, sorted.
inline std::vector<std::string> FixtureNames(const std::filesystem::path& folder,
                                             const std::string& extension) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == extension) {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

// Compares `actual` with folder/NAME.expected, or rewrites that file when asked to.
inline void ExpectMatchesExpectation(const std::filesystem::path& folder, const std::string& name,
                                     const std::string& actual) {
    const std::filesystem::path expectedPath = folder / (name + ".expected");
    const char* update = std::getenv("LM_UPDATE_EXPECTED");
    if (update != nullptr && std::string(update) == "1") {
        std::ofstream(expectedPath, std::ios::binary) << actual;
        return;
    }
    ASSERT_TRUE(std::filesystem::exists(expectedPath)) << expectedPath;
    EXPECT_EQ(ReadBytes(expectedPath), actual);
}

// Names a parameterised test case after its fixture.
inline std::string FixtureTestName(const ::testing::TestParamInfo<std::string>& info) {
    return info.param;
}

}  // namespace LocalizationManager::Testing
