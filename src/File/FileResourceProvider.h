#pragma once

#include "File/FileSearch.h"
#include "StringLocalizing/Pipeline/IResourceProvider.h"

#include <string>
#include <vector>

namespace LocalizationManager::File {

// Serves texts, plural rule files and binary resources from a localization tree on disk: a
// root directory and an optional alternative directory searched before it. Each culture folder
// ("neutral", "en", "en-US", ...) holds "Locs/<scope>.lt", binary resources under "<scope>/"
// and "Common/"; plural rule files live in the root only, as "<language>/<qualifier>/Plural.rule"
// or "<language>/Plural.rule".
//
// Immutable after construction and without a cache: every call looks at the disk again, so a
// file that appears later is found by the next call. Safe for concurrent callers as far as the
// file system is. Shared by the manager and its localizers.
//
// Every lookup refuses a scope or key that is empty, absolute (begins with "/" or "\") or holds
// a ".." component with std::runtime_error ("invalid resource name '<name>'"), and a language id
// outside the language table with std::range_error, before any file is looked at. Errors of
// reading a file (a directory or FIFO found where a file was expected) pass through unchanged.
class FileResourceProvider : public StringLocalizing::Pipeline::IResourceProvider {
  public:
    // Throws UloCallFailedException ("root localization URI has to be directory, error: <code
    // text>") when the root cannot be queried (missing, no access). A root that is a plain file
    // and an alternative that does not exist are accepted; an empty alternative means none.
    FileResourceProvider(const std::u16string& rootLocalizationUri,
                         const std::u16string& alternativeLocalizationUri);

    FileResourceProvider(const FileResourceProvider&) = delete;
    FileResourceProvider& operator=(const FileResourceProvider&) = delete;

    // Reads the first of LocalizationFileCandidates that exists. Throws std::runtime_error
    // ("cannot find localization file '<scope>.lt'") when none does.
    StringLocalizing::Pipeline::ResourceFileText GetLocalizationText(
        const std::u16string& scope, const localization_manager::Culture& culture) override;

    // Whether FindPluralFormRulesFile finds a file; throws only for an unsupported language.
    bool HasPluralFormRules(const StringLocalizing::Model::PluralFormRuleId& ruleId) override;

    // Reads the file FindPluralFormRulesFile finds. Throws std::runtime_error ("cannot find
    // plural form file for id '<language>[-<qualifier>]'") when there is none.
    StringLocalizing::Pipeline::ResourceFileText GetPluralFormRulesText(
        const StringLocalizing::Model::PluralFormRuleId& ruleId) override;

    // The first of BinaryResourceCandidates that exists; the file is not opened. Throws
    // std::runtime_error ("cannot find binary resource file for key '<key>'") when none does.
    std::u16string GetBinaryResourcePath(const std::u16string& scope,
                                         const localization_manager::Culture& culture,
                                         const std::u16string& key) override;

    // The first of PluralFormRulesCandidates that exists, or the empty string.
    virtual std::u16string FindPluralFormRulesFile(
        const StringLocalizing::Model::PluralFormRuleId& ruleId) const;

    // The paths each lookup tries, in order, without looking at any file; they throw what the
    // lookups throw before touching the disk.
    //
    // Localization file: "<culture folder>/Locs/<scope>.lt" through every culture folder of the
    // alternative directory (when given), then of the root.
    std::vector<std::u16string> LocalizationFileCandidates(
        const std::u16string& scope, const localization_manager::Culture& culture) const;
    // Binary resource: "<culture folder>/<scope>/<key>" then "<culture folder>/Common/<key>" per
    // culture folder, alternative directory first, then root.
    std::vector<std::u16string> BinaryResourceCandidates(
        const std::u16string& scope, const localization_manager::Culture& culture,
        const std::u16string& key) const;
    // Plural rules: root only, "<language>/<qualifier>/Plural.rule" when the qualifier is not
    // empty, then "<language>/Plural.rule"; no "neutral" folder.
    std::vector<std::u16string> PluralFormRulesCandidates(
        const StringLocalizing::Model::PluralFormRuleId& ruleId) const;

  private:
    // One search per base directory: the alternative one (when given) first, then the root.
    std::vector<FileSearch> Searches(const std::vector<std::u16string>& relativePaths,
                                     const localization_manager::Culture& culture) const;

    const std::u16string rootLocalizationUri_;
    const std::u16string alternativeLocalizationUri_;
};

}  // namespace LocalizationManager::File
