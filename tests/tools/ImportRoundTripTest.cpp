// A culture rebuilt from its catalog alone gives the same catalog back, over a generated tree
// of 10,000 keys in five cultures. A test of its own for its time: under the sanitizers the
// tool's runs over such a tree take minutes.

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace locmgr::testing {
namespace {

// A tree of 10,000 keys in five cultures, Arabic's six forms and Japanese's one among them:
// plain texts, parameters, references, plural texts and texts with two plural parameters.
class GeneratedTree {
  public:
    static constexpr int kKeys = 10000;

    explicit GeneratedTree(LocalizationManager::Testing::TempTree& folder) : folder_(folder) {
        folder.File("tree/locmgr.json", R"({"neutralLanguage": "en"})");
        folder.File("tree/neutral/Locs/big.lt", Texts("en", 2));
        for (const auto& [culture, forms] : kCultures) {
            folder.File("tree/" + culture + "/Locs/big.lt", Texts(culture, forms));
        }
    }

    static inline const std::vector<std::pair<std::string, int>> kCultures{
        {"ru", 3}, {"ar", 6}, {"fr", 2}, {"de", 2}, {"ja", 1}};

  private:
    static std::string Forms(const std::string& parameter, const std::string& word, int forms) {
        std::string text = "{$" + parameter + ":";
        for (int form = 0; form < forms; ++form) {
            text += std::string(form == 0 ? " " : ", ") + "$" + parameter + " + ' " + word +
                    std::to_string(form) + "'";
        }
        return text + "}";
    }

    static std::string Texts(const std::string& culture, int forms) {
        std::string file = "; generated\n";
        for (int key = 0; key < kKeys; ++key) {
            const std::string name = "k" + std::to_string(key);
            const std::string word = culture + std::to_string(key);
            switch (key % 5) {
                case 0:
                    file += name + " = '" + word + " {plain}'\n";
                    break;
                case 1:
                    file += "; a note\n" + name + " = '" + word + " ' + $fileName + '.'\n";
                    break;
                case 2:
                    file += name + " = k" + std::to_string(key - 2) + " + ' " + word + "'\n";
                    break;
                case 3:
                    file += name + " = 'Got ' + " + Forms("count", word, forms) + " + '.'\n";
                    break;
                default:
                    file += name + " = " + Forms("count", word, forms) + " + ' in ' + " +
                            Forms("folders", "f" + word, forms) + "\n";
            }
        }
        return file;
    }

    LocalizationManager::Testing::TempTree& folder_;
};

// A catalog holds the sentence of every choice of forms of every text, so equal catalogs
// before and after mean equal texts for every number.
TEST(ImportRoundTripTest, ACultureRebuiltFromItsCatalogGivesTheSameCatalog) {
    LocalizationManager::Testing::TempTree folder;
    const GeneratedTree tree(folder);
    const std::string root = std::filesystem::path(folder.Path("tree")).string();
    for (const auto& [culture, forms] : GeneratedTree::kCultures) {
        // XLIFF for the cultures with two forms: libxml2's tree of a catalog with six forms
        // per text is the slowest part of the run.
        const std::string format = forms == 2 ? "xliff" : "po";
        const std::string first = std::filesystem::path(folder.Path("first-" + culture)).string();
        const std::string second = std::filesystem::path(folder.Path("second-" + culture)).string();
        for (const std::string& out : {first, second}) {
            const ProcessResult result = Locmgr(
                {"export", "--root", root, "--culture", culture, "--out", out, "--format", format});
            ASSERT_EQ(0, result.exitStatus) << result.err;
            if (out == first) {
                std::filesystem::remove(root + "/" + culture + "/Locs/big.lt");
                const std::string catalog = first + (format == "po" ? "/big.po" : "/big.xlf");
                const ProcessResult imported =
                    Locmgr({"import", "--root", root, "--culture", culture, "--in", catalog});
                ASSERT_EQ(0, imported.exitStatus) << imported.err;
            }
        }
        const std::string name = format == "po" ? "/big.po" : "/big.xlf";
        EXPECT_EQ(ReadFile(first + name), ReadFile(second + name)) << culture;
    }
}

}  // namespace
}  // namespace locmgr::testing
