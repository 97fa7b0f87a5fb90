// "locmgr batch" over trees made by the tests: numbers as parameters, the bound on the
// localizers it keeps, and error lines that hold a NUL.

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace locmgr::testing {
namespace {

using LocalizationManager::Testing::TempTree;
using ::testing::HasSubstr;

// Two scopes in two cultures; "echo" shows the parameter's text as the resolver gave it,
// "count" reads it as a plural discriminator.
class BatchCommandTest : public ::testing::Test {
  protected:
    BatchCommandTest() {
        tree_.File("en/Locs/common.lt", "c = 'common en'\n")
            .File("ru/Locs/common.lt", "c = 'common ru'\n")
            .File("en/Locs/a.lt", "echo = '[' + $n + ']'\ncount = {$n: 'one', 'other'}\n")
            .File("ru/Locs/a.lt", "echo = '<' + $n + '>'\ncount = {$n: 'one', 'few', 'many'}\n")
            .File("en/Locs/b.lt", "x = 'b en'\n")
            .File("ru/Locs/b.lt", "x = 'b ru'\n");
    }

    ProcessResult Batch(const std::string& input, std::vector<std::string> options = {}) {
        options.insert(options.begin(),
                       {"batch", "--root", std::filesystem::path(tree_.Path()).string()});
        return Locmgr(options, input);
    }

    TempTree tree_;
};

TEST_F(BatchCommandTest, WholeNumbersReachTheResolverAsIntegersOthersAsWritten) {
    const struct {
        std::string written;
        std::string text;   // what the resolver was given
        std::string count;  // the English plural form, "" where the number is no integer
    } cases[] = {
        {"1000", "1000", "other"},
        {"1e3", "1000", "other"},
        {"1E+3", "1000", "other"},
        {"1000.0", "1000", "other"},
        {"10.00e2", "1000", "other"},
        {"1.0", "1", "one"},
        {"0.1e1", "1", "one"},
        {"-1e3", "-1000", "other"},
        {"-0.0", "0", "other"},
        {"-5", "-5", "other"},
        {"18446744073709551616", "18446744073709551616", ""},  // beyond 64 bits
        {"1e99", "1" + std::string(99, '0'), ""},
        {"1e100", "1e100", ""},  // more than 100 digits: as written
        {"2.5", "2.5", ""},
        {"1.50", "1.50", ""},
        {"1.5e-3", "1.5e-3", ""},
        {"12e-1", "12e-1", ""},
        {"1.0000000000000000001", "1.0000000000000000001", ""},  // 1.0 as a double
    };
    std::string input;
    for (const auto& testCase : cases) {
        for (const std::string key : {"echo", "count"}) {
            input += R"({"scope": "a", "culture": "en", "key": ")" + key +
                     R"(", "params": {"n": )" + testCase.written + "}}\n";
        }
    }
    const std::vector<std::string> answers = Lines(Batch(input).out);
    ASSERT_EQ(2 * std::size(cases), answers.size());
    for (std::size_t index = 0; index < std::size(cases); ++index) {
        const auto& testCase = cases[index];
        EXPECT_EQ(R"({"ok": true, "text": "[)" + testCase.text + R"(]"})", answers[2 * index])
            << testCase.written;
        if (testCase.count.empty()) {
            EXPECT_THAT(answers[2 * index + 1], HasSubstr(R"("ok": false)")) << testCase.written;
        } else {
            EXPECT_EQ(R"({"ok": true, "text": ")" + testCase.count + R"("})",
                      answers[2 * index + 1])
                << testCase.written;
        }
    }
}

TEST_F(BatchCommandTest, RequestsAreReadAsDocumented) {
    const struct {
        std::string request;
        std::string answer;
    } cases[] = {
        {R"({"scope": "b", "culture": "en", "key": "x"})", R"({"ok": true, "text": "b en"})"},
        // Other members are ignored, whatever they hold; of a repeated member the last counts.
        {R"({"extra": {"scope": 1, "params": [{}]}, "scope": "b", "culture": "en", "key": "x"})",
         R"({"ok": true, "text": "b en"})"},
        {R"({"scope": 1, "scope": "b", "culture": "ru", "key": "x", "params": null})",
         R"({"ok": true, "text": "b ru"})"},
        {R"({"scope": "a", "culture": "en", "key": "echo", "params": {"n": "x", "n": 7}})",
         R"({"ok": true, "text": "[7]"})"},
        {R"({"scope": "a", "culture": "en", "key": "echo", "params": 3, "params": {"n": "y"}})",
         R"({"ok": true, "text": "[y]"})"},
        {R"([{"scope": "b", "culture": "en", "key": "x"}])",
         R"({"ok": false, "code": 2147483718, "error": "invalid request: a request must be a JSON object"})"},
        {R"({"scope": "b", "culture": "en"})",
         R"({"ok": false, "code": 2147483718, "error": "invalid request: \"key\" must be a string"})"},
        {R"({"key": "x", "culture": ["en"], "scope": 2})",
         R"({"ok": false, "code": 2147483718, "error": "invalid request: \"scope\" must be a string"})"},
        {R"({"scope": "b", "culture": "en", "key": "x", "params": []})",
         R"({"ok": false, "code": 2147483718, "error": "invalid request: \"params\" must be an object"})"},
        {R"({"scope": "b", "culture": "en", "key": "x", "params": {"z": true, "m": {}}})",
         R"({"ok": false, "code": 2147483718, "error": "invalid request: parameter \"m\" must be a string or a number"})"},
    };
    for (const auto& testCase : cases) {
        const ProcessResult result = Batch(testCase.request + "\n");
        EXPECT_EQ(testCase.answer + "\n", result.out) << testCase.request;
    }
    const ProcessResult notJson = Batch("{\"scope\": \n");
    EXPECT_THAT(notJson.out, ::testing::StartsWith(
                                 R"({"ok": false, "code": 2147483718, "error": "invalid request: )"
                                 R"([json.exception.parse_error.101] parse error at line 1)"));
}

TEST_F(BatchCommandTest, AnswersStayTheSameWhenFewerLocalizersAreKept) {
    std::string input;
    for (int round = 0; round < 3; ++round) {
        for (const std::string culture : {"en", "ru"}) {
            for (const std::string scope : {"a", "b"}) {
                const std::string key = scope == "a" ? "count" : "x";
                input += R"({"scope": ")" + scope + R"(", "culture": ")" + culture +
                         R"(", "key": ")" + key + R"(", "params": {"n": )" +
                         std::to_string(round + 1) + "}}\n";
                input += R"({"scope": ")" + scope + R"(", "culture": ")" + culture +
                         R"(", "key": "c"})" + "\n";
            }
        }
    }
    const ProcessResult kept = Batch(input);
    EXPECT_EQ(0, kept.exitStatus) << kept.out << kept.err;
    EXPECT_EQ(24u, Lines(kept.out).size());
    for (const std::string bound : {"1", "2", "3"}) {
        const ProcessResult bounded = Batch(input, {"--max-localizers", bound});
        EXPECT_EQ(0, bounded.exitStatus) << bound;
        EXPECT_EQ(kept.out, bounded.out) << bound;
    }
}

TEST_F(BatchCommandTest, MaxLocalizersMustBeAWholeNumberFromOne) {
    for (const std::string value :
         {"0", "-1", "", "abc", "2x", " 3", "1.5", "99999999999999999999999"}) {
        const ProcessResult result = Batch("", {"--max-localizers=" + value});
        EXPECT_EQ(2, result.exitStatus) << value;
        EXPECT_EQ("", result.out) << value;
        EXPECT_THAT(result.err, HasSubstr("--max-localizers needs a whole number from 1 up, not '" +
                                          value + "'"));
    }
    EXPECT_EQ(0, Batch("", {"--max-localizers", "1"}).exitStatus);
}

// The tracer line of a request whose key or scope holds a NUL goes on past the NUL, on
// standard error and in the answer (where JSON writes it as \u0000).
TEST_F(BatchCommandTest, ErrorLinesKeepTheirNulCharacters) {
    const ProcessResult result = Batch(R"({"scope": "a", "culture": "en", "key": "ec\u0000ho"})"
                                       "\n"
                                       R"({"scope": "a\u0000b", "culture": "en", "key": "echo"})"
                                       "\n");
    const std::vector<std::string> answers = Lines(result.out);
    ASSERT_EQ(2u, answers.size()) << result.out;
    EXPECT_THAT(answers[0], HasSubstr(R"(key ec\u0000ho error: )"));
    EXPECT_THAT(answers[1], HasSubstr(R"(scope a\u0000b culture en-, error: )"));
    EXPECT_THAT(result.err, HasSubstr(std::string("key ec\0ho error: ", 17)));
    EXPECT_THAT(result.err, HasSubstr(std::string("scope a\0b culture en-, error: ", 30)));
    // Each answer's error is the whole of its line on standard error.
    const std::vector<std::string> errors = Lines(result.err);
    ASSERT_EQ(2u, errors.size()) << result.err;
    for (std::size_t index = 0; index < 2; ++index) {
        const auto answer = nlohmann::json::parse(answers[index]);
        EXPECT_EQ(errors[index], answer["error"].get<std::string>());
    }
}

}  // namespace
}  // namespace locmgr::testing
