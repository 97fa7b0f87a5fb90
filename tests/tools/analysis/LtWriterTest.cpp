// Writing values and editing files: every value of the parser fixtures and of the fuzz corpus
// reads back as it was written, and edits leave the rest of a file as it was, byte for byte.

#include "FuzzInput.h"
#include "LtWriter.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "TestSupport/ExpectThrowMessage.h"
#include "TestSupport/Fixtures.h"
#include "ulo/rtl/TextConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace locmgr::analysis {
namespace {

namespace fs = std::filesystem;
namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;
using LocalizationManager::Testing::ReadBytes;
using namespace std::string_literals;

struct Parsed {
    Model::ResourceDictionary dictionary;
    Parsing::SourceIndex index;
};

std::optional<Parsed> Parse(const std::u16string& text) {
    Parsed parsed;
    try {
        Parsing::ParseLocFileIndexed(text, u"test.lt", parsed.dictionary, parsed.index);
    } catch (const Parsing::ParsingException&) {
        return std::nullopt;
    }
    return parsed;
}

Model::Value ReadBack(const std::u16string& source) {
    const std::optional<Parsed> parsed = Parse(u"k = " + source);
    return parsed && parsed->dictionary.size() == 1 ? parsed->dictionary.at(u"k") : Model::Value{};
}

// A file of the parser fixtures or of the fuzz corpus that parses.
struct Sample {
    std::string name;
    std::string bytes;  // of a UTF-8 file; empty for a UTF-16 fuzz input
    std::u16string text;
};

std::vector<Sample> Samples() {
    std::vector<Sample> samples;
    const auto add = [&](const fs::path& path, const std::string& prefix) {
        const std::string bytes = ReadBytes(path);
        const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
        const bool utf8 = path.extension() == ".lt";
        Sample sample{prefix + path.stem().string(), utf8 ? bytes : std::string(),
                      LocalizationManager::Fuzzing::DecodeFuzzInput(data, bytes.size())};
        if (Parse(sample.text)) {
            samples.push_back(std::move(sample));
        }
    };
    for (const auto& entry :
         fs::directory_iterator(fs::path(LM_TEST_DATA_DIR) / "parsing" / "loc_file")) {
        if (entry.path().extension() == ".lt") {
            add(entry.path(), "fixture_");
        }
    }
    for (const auto& entry : fs::directory_iterator(LM_FUZZ_CORPUS_DIR)) {
        add(entry.path(), "corpus_");
    }
    return samples;
}

// Whether `edited` is `original` with one piece taken out or put in.
bool DiffersByOnePiece(const std::u16string& original, const std::u16string& edited) {
    const std::size_t shorter = std::min(original.size(), edited.size());
    const auto prefix = std::mismatch(original.begin(), original.begin() + shorter, edited.begin());
    const auto suffix =
        std::mismatch(original.rbegin(), original.rbegin() + shorter, edited.rbegin());
    return (prefix.first - original.begin()) + (suffix.first - original.rbegin()) >=
           static_cast<std::ptrdiff_t>(shorter);
}

std::vector<std::u16string> CommentTexts(const std::u16string& text,
                                         const Parsing::SourceIndex& index) {
    std::vector<std::u16string> comments;
    for (const Parsing::SourceSpan& span : index.comments) {
        comments.push_back(text.substr(span.begin.offset, span.end.offset - span.begin.offset));
    }
    return comments;
}

Model::Value Hard() {
    return Model::Value{{std::u16string(u" it's {$n} ; \\ C:\\temp\\"), Model::KeyRef{u"k"}}};
}

// Whether the lenient reading of the sample lost nothing of its bytes: only then must they be
// written back.
bool DecodedWhole(const Sample& sample) {
    try {
        return ulo::WideToUtf8(sample.text) == sample.bytes;
    } catch (const std::out_of_range&) {
        return false;
    }
}

void PrintTo(const Sample& sample, std::ostream* out) {
    *out << sample.name;
}

class LtWriterSampleTest : public testing::TestWithParam<Sample> {
  protected:
    const std::u16string& text_ = GetParam().text;
    const Parsed parsed_ = *Parse(text_);
    // Edits of a key defined twice are refused.
    const bool editable_ = parsed_.index.duplicates.empty();
};

TEST_P(LtWriterSampleTest, ValuesAndRewrittenFilesReadBack) {
    LtEdit edit(text_, parsed_.index);
    for (const auto& [key, value] : parsed_.dictionary) {
        EXPECT_EQ(value, ReadBack(FormatValue(value))) << ulo::WideToNarrowMessage(key);
        if (editable_) {
            edit.Replace(key, value);
        }
    }
    const std::u16string text = edit.Text();
    const std::optional<Parsed> reparsed = Parse(text);
    ASSERT_TRUE(reparsed) << ulo::WideToNarrowMessage(text);
    EXPECT_EQ(parsed_.dictionary, reparsed->dictionary);
    EXPECT_EQ(CommentTexts(text_, parsed_.index), CommentTexts(text, reparsed->index));
}

TEST_P(LtWriterSampleTest, AnUntouchedEditGivesTheFileBack) {
    EXPECT_EQ(text_, LtEdit(text_, parsed_.index).Text());
    if (GetParam().bytes.empty()) {
        return;
    }
    try {
        LtFileText file = DecodeLtFile(GetParam().bytes);
        file.text = LtEdit(file.text, Parse(file.text)->index).Text();
        EXPECT_EQ(GetParam().bytes, EncodeLtFile(file));
    } catch (const LtWriteError&) {
        EXPECT_FALSE(DecodedWhole(GetParam()));
    }
}

TEST_P(LtWriterSampleTest, EachEntryIsRemovedOrFollowedAloneAndTheRestStays) {
    for (const Parsing::IndexedEntry& entry :
         editable_ ? parsed_.index.entries : std::vector<Parsing::IndexedEntry>()) {
        LtEdit removal(text_, parsed_.index);
        removal.Remove(entry.key);
        Model::ResourceDictionary expected = parsed_.dictionary;
        expected.erase(entry.lowerKey);
        const std::optional<Parsed> afterRemoval = Parse(removal.Text());
        ASSERT_TRUE(afterRemoval) << ulo::WideToNarrowMessage(removal.Text());
        EXPECT_EQ(expected, afterRemoval->dictionary);
        EXPECT_TRUE(DiffersByOnePiece(text_, removal.Text()));

        LtEdit insertion(text_, parsed_.index);
        insertion.InsertAfter(entry.key, u"zz_New", Hard());
        expected = parsed_.dictionary;
        expected.emplace(u"zz_new", Hard());
        const std::optional<Parsed> afterInsertion = Parse(insertion.Text());
        ASSERT_TRUE(afterInsertion) << ulo::WideToNarrowMessage(insertion.Text());
        EXPECT_EQ(expected, afterInsertion->dictionary);
        EXPECT_TRUE(DiffersByOnePiece(text_, insertion.Text()));
        const auto& entries = afterInsertion->index.entries;
        const auto anchor = std::find_if(entries.begin(), entries.end(), [&](const auto& each) {
            return each.lowerKey == entry.lowerKey;
        });
        ASSERT_NE(entries.end(), anchor);
        EXPECT_EQ(u"zz_new", std::next(anchor)->lowerKey);
    }
}

INSTANTIATE_TEST_SUITE_P(FixturesAndCorpus, LtWriterSampleTest, testing::ValuesIn(Samples()),
                         [](const testing::TestParamInfo<Sample>& info) {
                             std::string name = info.param.name;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

Model::PluralForm PluralOf(const std::u16string& parameter, std::vector<Model::Value> forms) {
    Model::PluralForm plural{parameter, {}};
    for (Model::Value& form : forms) {
        plural.forms.push_back(new Model::Value(std::move(form)));
    }
    return plural;
}

Model::Value Plural(const std::u16string& parameter, std::vector<Model::Value> forms) {
    return Model::Value{{PluralOf(parameter, std::move(forms))}};
}

Model::Value Text(const std::u16string& text) {
    return Model::Value{{text}};
}

Model::Value Nested(int depth) {
    return depth == 0 ? Text(u"x") : Plural(u"n", {Nested(depth - 1)});
}

TEST(LtWriterTest, HardTextsAreWrittenPlainlyAndReadBack) {
    const std::vector<std::pair<std::u16string, std::u16string>> cases = {
        {u"  lead and trail  ", u"'  lead and trail  '"},
        {u"it's", u"'it\\'s'"},
        {u"C:\\temp\\new", u"'C:\\temp\\\\new'"},
        {u"ends in \\", u"'ends in \\\\'"},
        {u"\\'", u"'\\\\\\''"},
        {u"line\nnext\r\nlast\r", u"'line\\nnext\r\\nlast\r'"},
        {u"{$n: 'a'} + $ 5 ; $x", u"'{$n: \\'a\\'} + $ 5 ; $x'"},
        {u"", u"''"},
        {u"nul\0\U0001F600"s, u"'nul\0\U0001F600'"s},
    };
    for (const auto& [text, source] : cases) {
        EXPECT_EQ(source, FormatValue(Text(text)));
        EXPECT_EQ(Text(text), ReadBack(source));
    }
    const Model::Value parameter{{Model::Param{u"m"}}};
    const Model::Value mixed{{std::u16string(u"a"), std::u16string(u"b"), Model::KeyRef{u"k_1"},
                              Model::Param{u"Count"},
                              PluralOf(u"n", {Plural(u"m", {Text(u"x"), parameter}), Text(u"y")})}};
    EXPECT_EQ(u"'a' + 'b' + k_1 + $Count + {$n: {$m: 'x', $m}, 'y'}", FormatValue(mixed));
    EXPECT_EQ(mixed, ReadBack(FormatValue(mixed)));
}

TEST(LtWriterTest, ValuesTheParserCannotGiveAreRefused) {
    const std::string empty =
        "a value without operands cannot be written: a value holds at least one";
    const std::vector<std::pair<Model::Value, std::string>> cases = {
        {Model::Value{}, empty},
        {Plural(u"n", {Model::Value{}}), empty},
        {Model::Value{{Model::KeyRef{u"Title"}}},
         "key reference 'Title' cannot be written: a reference is a key in lower case"},
        {Plural(u"a b", {Text(u"x")}), "parameter name 'a b' cannot be written: it is not a key"},
        {Model::Value{{Model::Param{u"$n"}}},
         "parameter name '$n' cannot be written: it is not a key"},
        {Plural(u"n", {}),
         "plural invocation over $n with 0 forms cannot be written: it takes 1 to 6"},
        {Plural(u"n", std::vector<Model::Value>(7, Text(u"x"))),
         "plural invocation over $n with 7 forms cannot be written: it takes 1 to 6"},
        {Nested(33),
         "plural invocations nested more than 32 deep cannot be written: the parser refuses them"},
    };
    for (const auto& [value, message] : cases) {
        EXPECT_THROW_MSG(FormatValue(value), LtWriteError, message);
    }
}

TEST(LtWriterTest, EditsChangeOnlyWhatTheyName) {
    const Model::Value v = Text(u"v");
    const Model::Value c{{Model::KeyRef{u"c"}}};
    const std::vector<std::tuple<std::u16string, std::function<void(LtEdit&)>, std::u16string>>
        cases = {
            {u"Title  =\t'x' +\n  'y' ; note\n", [&](LtEdit& e) { e.Replace(u"TITLE", v); },
             u"Title  =\t'v' ; note\n"},
            // A reference must not run into the key after it.
            {u"a='x'b='y'", [&](LtEdit& e) { e.Replace(u"a", c); }, u"a=c b='y'"},
            {u"; head\n\n; about b\n  ; more\nb = 'y' ; b\nc = 'z'\n",
             [](LtEdit& e) { e.Remove(u"b"); }, u"; head\n\nc = 'z'\n"},
            // A ";" line inside a string is no comment.
            {u"a = 'x\n; no'\nb = 'y'\n", [](LtEdit& e) { e.Remove(u"b"); }, u"a = 'x\n; no'\n"},
            {u"a='x' b='y'\n", [](LtEdit& e) { e.Remove(u"a"); }, u"b='y'\n"},
            {u"a='x' b='y'\n", [](LtEdit& e) { e.Remove(u"b"); }, u"a='x'\n"},
            {u"a = 'x'\r\nb = 'y'\r\n", [&](LtEdit& e) { e.InsertAfter(u"a", u"n", v); },
             u"a = 'x'\r\nn = 'v'\r\nb = 'y'\r\n"},
            {u"a = 'x'\rb = 'y'", [&](LtEdit& e) { e.InsertAfter(u"b", u"n", v); },
             u"a = 'x'\rb = 'y'\rn = 'v'"},
            {u"a='x' b='y'\n", [&](LtEdit& e) { e.InsertAfter(u"a", u"n", v); },
             u"a='x' n = 'v' b='y'\n"},
            {u"a = 'x' ; end", [&](LtEdit& e) { e.Append(u"n", v); }, u"a = 'x' ; end\nn = 'v'"},
            {u"", [&](LtEdit& e) { e.Append(u"n", v); }, u"n = 'v'\n"},
            {u"a = 'x'\n",
             [&](LtEdit& e) {
                 e.InsertAfter(u"a", u"n", v);
                 e.InsertAfter(u"n", u"o", v);
                 e.InsertAfter(u"a", u"m", c);
                 e.Replace(u"o", c);
                 e.Remove(u"N");
             },
             u"a = 'x'\nm = c\no = c\n"},
            {u"; a\na = 'x'\nb = 'y' c = 'z'\n",
             [&](LtEdit& e) {
                 e.InsertAfter(u"a", u"a2", v);
                 e.InsertAfter(u"b", u"b2", v);
                 e.Remove(u"a");
                 e.Remove(u"b");
                 e.Append(u"a", v);
             },
             u"a2 = 'v'\nb2 = 'v' c = 'z'\na = 'v'\n"},
        };
    for (const auto& [text, change, expected] : cases) {
        LtEdit edit(text, Parse(text)->index);
        change(edit);
        EXPECT_EQ(ulo::WideToUtf8(expected), ulo::WideToUtf8(edit.Text())) << ulo::WideToUtf8(text);
    }
}

TEST(LtWriterTest, EditsOfEntriesThatAreNotThereOrTwiceAreRefused) {
    const std::u16string text = u"a = 'x'\nb = 'y'\nB = 'z'\n";
    LtEdit edit(text, Parse(text)->index);
    EXPECT_THROW_MSG(edit.Replace(u"c", Text(u"v")), LtWriteError, "no entry 'c'");
    EXPECT_THROW_MSG(edit.Append(u"A", Text(u"v")), LtWriteError, "an entry 'A' exists already");
    EXPECT_THROW_MSG(edit.Append(u"9a", Text(u"v")), LtWriteError,
                     "'9a' is not a key: an ASCII letter or '_', then letters, digits and '_'");
    EXPECT_THROW_MSG(edit.Remove(u"b"), LtWriteError,
                     "'b' is defined more than once: which definition to edit is not clear");
    edit.Remove(u"a");
    EXPECT_THROW_MSG(edit.InsertAfter(u"a", u"n", Text(u"v")), LtWriteError, "no entry 'a'");
    EXPECT_THROW_MSG(edit.Append(u"n", Model::Value{}), LtWriteError,
                     "a value without operands cannot be written: a value holds at least one");
    EXPECT_FALSE(edit.Contains(u"n"));
    EXPECT_EQ(u"b = 'y'\nB = 'z'\n", edit.Text());
}

TEST(LtWriterTest, FilesKeepTheirMarkAndBytesThatWouldChangeAreRefused) {
    const LtFileText marked = DecodeLtFile(
        "\xEF\xBB\xBF"
        "a = '\xC3\xA9'");
    EXPECT_TRUE(marked.byteOrderMark);
    EXPECT_EQ(u"a = '\u00E9'", marked.text);
    EXPECT_EQ(
        "\xEF\xBB\xBF"
        "a = '\xC3\xA9'",
        EncodeLtFile(marked));
    for (const std::string bytes : {"a = '\xFF'", "a = '\xC0\xAF'", "a = '\xED\xA0\x80'"}) {
        EXPECT_THROW_MSG(DecodeLtFile(bytes), LtWriteError,
                         "the file is not valid UTF-8: it could not be written back as it is");
    }
    EXPECT_THROW_MSG(EncodeLtFile({u"a = '\xDC00'", false}), LtWriteError,
                     "the text holds a lone surrogate U+DC00 at unit 5, which UTF-8 cannot encode");
}

}  // namespace
}  // namespace locmgr::analysis
