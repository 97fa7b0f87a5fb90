#include "File/FileResourceProvider.h"

#include "File/FileStream.h"
#include "StringLocalizing/Model/LanguageName.h"
#include "ulo/rtl/CodeContracts.h"
#include "ulo/rtl/FileSystem.h"
#include "ulo/rtl/MessageError.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <stdexcept>

namespace LocalizationManager::File {

namespace {

using StringLocalizing::Model::PluralFormRuleId;
using StringLocalizing::Pipeline::ResourceFileText;

// Contract messages name this source as the established logs know it, whatever our file layout.
constexpr const char* kSourceFile = "File/FileResourceProvider";

constexpr char16_t kLocalizationFolder[] = u"Locs";
constexpr char16_t kLocalizationFileExtension[] = u".lt";
constexpr char16_t kCommonBinaryFolder[] = u"Common";
constexpr char16_t kPluralRulesFileName[] = u"Plural.rule";

bool IsSeparator(char16_t character) {
    return character == u'/' || character == u'\\';
}

// Scopes and keys come from hosts and are joined into paths as they stand; refusing these
// shapes keeps every lookup inside the localization directories.
void RequireResourceName(const std::u16string& name) {
    bool valid = !name.empty() && !IsSeparator(name.front());
    auto componentStart = name.begin();
    while (valid) {
        const auto componentEnd = std::find_if(componentStart, name.end(), IsSeparator);
        valid = std::u16string(componentStart, componentEnd) != u"..";
        if (componentEnd == name.end()) {
            break;
        }
        componentStart = componentEnd + 1;
    }
    if (!valid) {
        // Message text, which never fails: the name may hold any UTF-16 unit.
        throw ulo::MessageError("invalid resource name '" + ulo::WideToNarrowMessage(name) + "'");
    }
}

std::u16string FindFirst(const std::vector<FileSearch>& searches) {
    for (const FileSearch& search : searches) {
        std::u16string path = search.Find();
        if (!path.empty()) {
            return path;
        }
    }
    return std::u16string();
}

std::vector<std::u16string> AllCandidates(const std::vector<FileSearch>& searches) {
    std::vector<std::u16string> candidates;
    for (const FileSearch& search : searches) {
        const std::vector<std::u16string> some = search.Candidates();
        candidates.insert(candidates.end(), some.begin(), some.end());
    }
    return candidates;
}

std::u16string LocalizationFileName(const std::u16string& scope) {
    return scope + kLocalizationFileExtension;
}

}  // namespace

FileResourceProvider::FileResourceProvider(const std::u16string& rootLocalizationUri,
                                           const std::u16string& alternativeLocalizationUri)
    : rootLocalizationUri_(rootLocalizationUri),
      alternativeLocalizationUri_(alternativeLocalizationUri) {
    // Passes for a plain file too (the query answers 1): it guards against unreachable roots.
    ULO_CHECK_CALL_AT(ulo::filesystem::IsDirectory(rootLocalizationUri),
                      "root localization URI has to be directory", kSourceFile, 111);
    if (!alternativeLocalizationUri.empty()) {
        // Queries the root again, not the alternative: a missing alternative is accepted and
        // simply never yields a file. Established behaviour; keep it.
        ULO_CHECK_CALL_AT(ulo::filesystem::IsDirectory(rootLocalizationUri),
                          "alternative localization URI has to be directory or empty", kSourceFile,
                          115);
    }
}

ResourceFileText FileResourceProvider::GetLocalizationText(
    const std::u16string& scope, const localization_manager::Culture& culture) {
    RequireResourceName(scope);
    const std::u16string fileName = LocalizationFileName(scope);
    const std::u16string path =
        FindFirst(Searches({JoinPath(kLocalizationFolder, fileName)}, culture));
    if (path.empty()) {
        throw ulo::MessageError("cannot find localization file '" + ulo::WideToUtf8(fileName) +
                                "'");
    }
    return ResourceFileText{GetFileContent(path), path};
}

bool FileResourceProvider::HasPluralFormRules(const PluralFormRuleId& ruleId) {
    return !FindPluralFormRulesFile(ruleId).empty();
}

ResourceFileText FileResourceProvider::GetPluralFormRulesText(const PluralFormRuleId& ruleId) {
    const std::u16string path = FindPluralFormRulesFile(ruleId);
    if (path.empty()) {
        throw ulo::MessageError("cannot find plural form file for id '" +
                                StringLocalizing::Model::ToString(ruleId) + "'");
    }
    return ResourceFileText{GetFileContent(path), path};
}

std::u16string FileResourceProvider::GetBinaryResourcePath(
    const std::u16string& scope, const localization_manager::Culture& culture,
    const std::u16string& key) {
    RequireResourceName(scope);
    RequireResourceName(key);
    const std::u16string path =
        FindFirst(Searches({JoinPath(scope, key), JoinPath(kCommonBinaryFolder, key)}, culture));
    if (path.empty()) {
        throw ulo::MessageError("cannot find binary resource file for key '" +
                                ulo::WideToUtf8(key) + "'");
    }
    return path;
}

std::u16string FileResourceProvider::FindPluralFormRulesFile(const PluralFormRuleId& ruleId) const {
    for (const std::u16string& candidate : PluralFormRulesCandidates(ruleId)) {
        if (ulo::filesystem::Exists(candidate)) {
            return candidate;
        }
    }
    return std::u16string();
}

std::vector<std::u16string> FileResourceProvider::LocalizationFileCandidates(
    const std::u16string& scope, const localization_manager::Culture& culture) const {
    RequireResourceName(scope);
    return AllCandidates(
        Searches({JoinPath(kLocalizationFolder, LocalizationFileName(scope))}, culture));
}

std::vector<std::u16string> FileResourceProvider::BinaryResourceCandidates(
    const std::u16string& scope, const localization_manager::Culture& culture,
    const std::u16string& key) const {
    RequireResourceName(scope);
    RequireResourceName(key);
    return AllCandidates(
        Searches({JoinPath(scope, key), JoinPath(kCommonBinaryFolder, key)}, culture));
}

std::vector<std::u16string> FileResourceProvider::PluralFormRulesCandidates(
    const PluralFormRuleId& ruleId) const {
    // Rule ids carry language ids signed; read unsigned, a negative id is outside the table
    // like any other stray id and gets the same range error.
    const std::u16string languageFolder =
        JoinPath(rootLocalizationUri_, WidenFolderName(StringLocalizing::Model::LanguageName(
                                           static_cast<std::uint32_t>(ruleId.languageId))));
    std::vector<std::u16string> candidates;
    if (!ruleId.qualifier.empty() && IsFolderNamePart(ruleId.qualifier)) {
        candidates.push_back(JoinPath(JoinPath(languageFolder, WidenFolderName(ruleId.qualifier)),
                                      kPluralRulesFileName));
    }
    candidates.push_back(JoinPath(languageFolder, kPluralRulesFileName));
    return candidates;
}

std::vector<FileSearch> FileResourceProvider::Searches(
    const std::vector<std::u16string>& relativePaths,
    const localization_manager::Culture& culture) const {
    std::vector<FileSearch> searches;
    if (!alternativeLocalizationUri_.empty()) {
        searches.emplace_back(relativePaths, alternativeLocalizationUri_, culture);
    }
    searches.emplace_back(relativePaths, rootLocalizationUri_, culture);
    return searches;
}

}  // namespace LocalizationManager::File
