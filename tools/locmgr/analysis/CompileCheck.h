#pragma once

// Cycles and expansion limits, found by the engine's own compiler on copies of the parsed
// texts, linked as the runtime links them (scope -> common -> root). Missing keys are left to
// the reference check, which names the key that refers to them; here they expand to nothing,
// so that one compilation finds every cycle of a file rather than stopping at the first
// missing key.

#include "FileUse.h"
#include "StringLocalizing/Compiling/IExpressionProvider.h"

#include <boost/shared_ptr.hpp>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace locmgr::analysis {

// The common texts of a culture, compiled once and shared as the parent of every scope of
// the cultures that read them.
class CommonCompilation {
  public:
    // `common` may be null (no common file) or unparsable: its scopes then compile against
    // nothing.
    explicit CommonCompilation(const FileUse& common);

    // The cycles and limits of the common file itself.
    const std::vector<Finding>& Findings() const { return findings_; }
    // The parent of a scope's compiler. Failures of the common texts reached from a scope
    // are the common file's findings, not the scope's, so they expand to nothing here.
    const boost::shared_ptr<LocalizationManager::StringLocalizing::Compiling::IExpressionProvider>&
    Parent() const {
        return parent_;
    }

  private:
    std::vector<Finding> findings_;
    boost::shared_ptr<LocalizationManager::StringLocalizing::Compiling::IExpressionProvider>
        parent_;
};

// cyclic-reference and expansion-limit findings of a scope file compiled over `common`.
std::vector<Finding> CheckCompilation(const FileUse& use, const CommonCompilation& common);

}  // namespace locmgr::analysis

namespace locmgr::analysis {

// By lower-cased key, the names of the parameters a text asks the application for once its
// references are expanded as the runtime expands them (within the file, then over `common`).
// A key whose expansion fails (a cycle, the expansion limit) keeps what it asks for itself.
using KeyParameters = std::map<std::u16string, std::set<std::u16string>>;
KeyParameters ExpandedParameters(const LocFile& file, const CommonCompilation& common);

}  // namespace locmgr::analysis
