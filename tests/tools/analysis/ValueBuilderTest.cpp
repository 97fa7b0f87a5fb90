// Values rebuilt from a catalog's whole sentences give the same sentences back, with whole
// words and placeholders shared by all forms moved out of the invocations.

#include "ParseValue.h"
#include "StringLocalizing/Model/ValueFormat.h"
#include "TranslationUnit.h"
#include "ValueBuilder.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace locmgr::analysis {
namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;

// The sentences of `value` for every choice of `forms` forms of `discriminators`, in the order
// units list them.
SentenceTable TableOf(const Model::Value& value, std::size_t forms,
                      const std::vector<std::u16string>& discriminators) {
    SentenceTable table;
    table.discriminators = discriminators;
    table.forms = forms;
    std::size_t choices = 1;
    for (std::size_t index = 0; index < table.discriminators.size(); ++index) {
        choices *= forms;
    }
    for (std::size_t choice = 0; choice < choices; ++choice) {
        // The first discriminator fastest, then the last, the second slowest.
        std::map<std::u16string, std::size_t> formOf;
        std::size_t rest = choice;
        if (!table.discriminators.empty()) {
            formOf[table.discriminators.front()] = rest % forms;
            rest /= forms;
        }
        for (std::size_t index = table.discriminators.size(); index-- > 1;) {
            formOf[table.discriminators[index]] = rest % forms;
            rest /= forms;
        }
        table.sentences.push_back(Evaluate(value, formOf));
    }
    return table;
}

TEST(ValueBuilderTest, RebuildsTheSentencesAndMovesSharedWordsOut) {
    const struct {
        std::u16string value;
        std::size_t forms;
        std::u16string rebuilt;
    } cases[] = {
        {u"'Download'", 1, u"'Download'"},
        {u"''", 1, u"''"},
        {u"'Loaded ' + fileCount + ' of ' + $total", 1, u"'Loaded ' + filecount + ' of ' + $total"},
        // Nothing whole is shared: "one file" and "files" differ in their first word.
        {u"{$n: 'one file', $n + ' files'}", 2, u"{$n: 'one file', $n + ' files'}"},
        // Shared words and placeholders move out; a word's shared start stays in.
        {u"{$n: $n + ' файл в папке.', $n + ' файла в папке.', $n + ' файлов в папке.'}", 3,
         u"$n + ' ' + {$n: 'файл', 'файла', 'файлов'} + ' в папке.'"},
        // Two parameters: the second's forms outermost, each factored on its own.
        {u"$c + {$c: ' file', ' files'} + ' in ' + {$f: 'one folder', $f + ' folders'}", 2,
         u"$c + ' ' + {$c: 'file', 'files'} + ' in ' + {$f: 'one folder', $f + ' folders'}"},
        // Forms that are all the same are no invocation.
        {u"{$n: 'same', 'same'}", 2, u"'same'"},
    };
    for (const auto& test : cases) {
        const Model::Value value = ParseValue(test.value);
        const SentenceTable table = TableOf(value, test.forms, Discriminators(value));
        const Model::Value rebuilt = BuildValue(table);
        EXPECT_EQ(Model::FormatValue(ParseValue(test.rebuilt)), Model::FormatValue(rebuilt))
            << std::string(test.value.begin(), test.value.end());
        EXPECT_EQ(table.sentences, TableOf(rebuilt, test.forms, table.discriminators).sentences);
    }
}

TEST(ValueBuilderTest, RefusesATableWithoutASentenceForEveryChoice) {
    SentenceTable table;
    table.discriminators = {u"n"};
    table.forms = 3;
    table.sentences = {{}, {}};
    EXPECT_THROW(BuildValue(table), std::invalid_argument);
}

}  // namespace
}  // namespace locmgr::analysis
