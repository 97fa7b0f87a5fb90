// "locmgr check" and the module agree: a tree that check passes gives no error for any key
// of any scope in any of its cultures, whatever number a plural invocation is given; and each
// error check reports for a culture is an error the module gives for that culture. The
// requests go through "locmgr batch", that is through the loaded module.

#include "File/TempTree.h"
#include "LocFile.h"
#include "ToolTestSupport.h"
#include "TreeModel.h"
#include "ulo/rtl/TextConversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <map>
#include <set>

namespace locmgr::testing {
namespace {

using nlohmann::json;
namespace analysis = locmgr::analysis;

// Numbers that reach every form of every built-in rule and of the example rule files.
const std::vector<std::string> kNumbers{
    "0",  "1",  "2",  "3",  "4",   "5",   "7",   "10",  "11",   "12",   "14", "15", "19",  "20",
    "21", "22", "25", "99", "100", "101", "102", "111", "1000", "1001", "-1", "-2", "-11", "-21"};

struct Request {
    std::string scope;
    std::string culture;
    std::string key;
    std::vector<std::string> parameters;
};

// Every key a request for `scope` in `culture` can ask for: those of the scope's file and of
// the culture's common texts, and those the "neutral" texts define, which an application
// asks of every culture. A file that does not parse gives the keys before its error.
std::vector<Request> RequestsFor(const analysis::TreeModel& model, const std::string& scope,
                                 const std::string& culture) {
    std::vector<Request> requests;
    std::set<std::u16string> keys;
    analysis::LocFileCache files;
    const auto& cultureValue = model.Cultures().at(culture);
    for (const std::string& source : {scope, std::string("common")}) {
        for (const std::u16string& path :
             {model.ServingFile(source, cultureValue), model.NeutralFile(source)}) {
            if (path.empty()) {
                continue;
            }
            for (const auto& entry : files.Get(path).Entries()) {
                if (keys.insert(entry.lowerKey).second) {
                    requests.push_back({scope, culture, ulo::WideToUtf8(entry.key), {}});
                }
            }
        }
    }
    return requests;
}

// The parameters the application knows: every name the "neutral" texts use. References copy
// the parameters of the keys they name, so each request is given all of them.
std::vector<std::string> ParametersOf(const analysis::TreeModel& model) {
    std::set<std::string> names;
    analysis::LocFileCache files;
    for (const analysis::LocFileEntry& file : model.Inventory().locFiles) {
        if (!model.Inventory().folders[file.folder].neutral) {
            continue;
        }
        for (const auto& entry : files.Get(file.path).Entries()) {
            for (const auto& parameter : entry.parameters) {
                names.insert(ulo::WideToUtf8(parameter.name));
            }
            for (const auto& plural : entry.plurals) {
                names.insert(ulo::WideToUtf8(plural.parameter));
            }
        }
    }
    return {names.begin(), names.end()};
}

// One batch line per number (one line when the text takes no parameter).
std::string BatchLines(const Request& request) {
    std::string lines;
    const std::vector<std::string> numbers =
        request.parameters.empty() ? std::vector<std::string>{"0"} : kNumbers;
    for (const std::string& number : numbers) {
        json params = json::object();
        for (const std::string& name : request.parameters) {
            params[name] = number;
        }
        lines += json{{"scope", request.scope},
                      {"culture", request.culture},
                      {"key", request.key},
                      {"params", params}}
                     .dump() +
                 "\n";
    }
    return lines;
}

std::vector<json> Answers(const std::vector<std::string>& treeArguments, const std::string& input) {
    std::vector<std::string> arguments{"batch"};
    arguments.insert(arguments.end(), treeArguments.begin(), treeArguments.end());
    const ProcessResult result = Locmgr(arguments, input);
    std::vector<json> answers;
    for (const std::string& line : Lines(result.out)) {
        answers.push_back(json::parse(line));
    }
    return answers;
}

TEST(RuntimeAgreementTest, WhatCheckPassesTheModuleServes) {
    const LocalizationManager::Testing::TempTree folder;
    const std::string pseudo = std::filesystem::path(folder.Path("pseudo")).string();
    ASSERT_EQ(0, Locmgr({"pseudo", "--root", kRoot, "--out", pseudo}).exitStatus);
    const std::vector<std::vector<std::string>> trees{
        {"--root", kRoot},
        {"--root", kRoot, "--alt", kAlt},
        {"--root", kRoot, "--alt", pseudo},
    };
    for (const auto& tree : trees) {
        std::vector<std::string> check{"check", "--culture", "fr", "--culture", "de-AT"};
        check.insert(check.end(), tree.begin(), tree.end());
        ASSERT_EQ(0, Locmgr(check).exitStatus) << tree.back();

        const analysis::TreeModel model(tree[1], tree.size() > 2 ? tree[3] : "", {"fr", "de-AT"});
        const std::vector<std::string> parameters = ParametersOf(model);
        std::string input;
        std::size_t requests = 0;
        for (const auto& [culture, value] : model.Cultures()) {
            for (const std::string& scope : model.Inventory().scopes) {
                for (Request request : RequestsFor(model, scope, culture)) {
                    request.parameters = parameters;
                    input += BatchLines(request);
                    ++requests;
                }
            }
        }
        ASSERT_GT(requests, 300u);
        for (const json& answer : Answers(tree, input)) {
            EXPECT_TRUE(answer["ok"].get<bool>()) << tree.back() << ": " << answer.dump();
        }
    }
}

std::string Lower(std::string key) {
    for (char& character : key) {
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    return key;
}

// The requests that should fail for a finding in `culture`: its own key, or, for a finding
// about a whole scope or culture, every key the culture can ask for there.
std::vector<Request> RequestsToFail(const analysis::TreeModel& model, const json& finding,
                                    const std::string& culture) {
    const std::string scope =
        finding["scope"].is_string() ? finding["scope"].get<std::string>() : std::string();
    const std::string key =
        finding["key"].is_string() ? finding["key"].get<std::string>() : std::string();
    std::vector<Request> requests;
    for (const std::string& candidate : model.Inventory().scopes) {
        if (!scope.empty() && scope != "common" && candidate != scope) {
            continue;
        }
        for (const Request& request : RequestsFor(model, candidate, culture)) {
            if (key.empty() || Lower(request.key) == Lower(key)) {
                requests.push_back(request);
            }
        }
    }
    return requests;
}

TEST(RuntimeAgreementTest, WhatCheckCallsAnErrorTheModuleRefuses) {
    const json report = JsonOf(Locmgr({"check", "--root", kBroken, "--format", "json"}));
    const analysis::TreeModel model(kBroken, "");
    const std::vector<std::string> parameters = ParametersOf(model);
    std::size_t confirmed = 0;
    for (const json& finding : report["findings"]) {
        if (finding["severity"] != "error") {
            continue;
        }
        for (const auto& culture : finding["cultures"]) {
            std::vector<Request> requests =
                RequestsToFail(model, finding, culture.get<std::string>());
            ASSERT_FALSE(requests.empty()) << culture << ": " << finding.dump();
            std::string input;
            for (Request& request : requests) {
                request.parameters = parameters;
                input += BatchLines(request);
            }
            bool refused = false;
            for (const json& answer : Answers({"--root", kBroken}, input)) {
                refused = refused || !answer["ok"].get<bool>();
            }
            EXPECT_TRUE(refused) << culture << ": " << finding.dump();
            ++confirmed;
        }
    }
    EXPECT_GE(confirmed, 12u);
}

}  // namespace
}  // namespace locmgr::testing
