#pragma once

// "locmgr keys": the keys a scope's requests may ask for, as constants of a C++ header, each
// with the parameters its texts ask for in any culture of the tree. The keys are those of the
// reference's file of the scope and of its common texts (a request of any scope finds them);
// the parameters are gathered from every culture's file of the scope and its common texts,
// with references expanded as the runtime expands them.

#include "TreeModel.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct KeyHeaderOptions {
    std::string scope;
    std::string reference = "neutral";  // "neutral" or a culture's folder name
    std::string nameSpace = "keys";     // the constants are in NAMESPACE::SCOPE
    std::string source;                 // how the header names the tree it was made from
};

struct KeyConstant {
    std::string key;                      // as the reference writes it
    std::string identifier;               // a C++ identifier for it
    std::vector<std::string> parameters;  // sorted
    std::string text;                     // the reference's text, as the file writes it
};

// A scope that cannot be written: unknown, or a reference file that does not load, or keys
// whose identifiers would clash.
class KeyHeaderError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The C++ names the header gives: "dialogs/save-as" is the namespace dialogs::save_u002Das,
// the key "delete" the constant kdelete.
std::string ScopeNamespace(const std::string& scope);
std::string KeyIdentifier(const std::u16string& key);

std::vector<KeyConstant> KeyConstants(const TreeModel& model, const KeyHeaderOptions& options);

// The header, complete. Throws KeyHeaderError for a namespace that is no C++ name.
std::string KeyHeader(const std::vector<KeyConstant>& keys, const KeyHeaderOptions& options);

}  // namespace locmgr::analysis
