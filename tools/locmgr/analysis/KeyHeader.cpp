#include "KeyHeader.h"

#include "CompileCheck.h"
#include "CultureFolder.h"
#include "FileUse.h"
#include "LocFile.h"
#include "LtWriter.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <sstream>

namespace locmgr::analysis {

namespace {

// Words a key may be spelt as that C++ reserves.
const std::set<std::string> kReserved{"alignas",       "alignof",     "and",
                                      "and_eq",        "asm",         "auto",
                                      "bitand",        "bitor",       "bool",
                                      "break",         "case",        "catch",
                                      "char",          "char8_t",     "char16_t",
                                      "char32_t",      "class",       "compl",
                                      "concept",       "const",       "consteval",
                                      "constexpr",     "constinit",   "const_cast",
                                      "continue",      "co_await",    "co_return",
                                      "co_yield",      "decltype",    "default",
                                      "delete",        "do",          "double",
                                      "dynamic_cast",  "else",        "enum",
                                      "explicit",      "export",      "extern",
                                      "false",         "float",       "for",
                                      "friend",        "goto",        "if",
                                      "inline",        "int",         "long",
                                      "mutable",       "namespace",   "new",
                                      "noexcept",      "not",         "not_eq",
                                      "nullptr",       "operator",    "or",
                                      "or_eq",         "private",     "protected",
                                      "public",        "register",    "reinterpret_cast",
                                      "requires",      "return",      "short",
                                      "signed",        "sizeof",      "static",
                                      "static_assert", "static_cast", "struct",
                                      "switch",        "template",    "this",
                                      "thread_local",  "throw",       "true",
                                      "try",           "typedef",     "typeid",
                                      "typename",      "union",       "unsigned",
                                      "using",         "virtual",     "void",
                                      "volatile",      "wchar_t",     "while",
                                      "xor",           "xor_eq",      "kAll",
                                      "parameters"};

std::string Narrow(const std::u16string& text) {
    return ulo::WideToNarrowMessage(text);
}

bool IsAsciiIdentifierCharacter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= u'0' && unit <= u'9') || unit == u'_';
}

}  // namespace

// Keys are ASCII letters, digits and "_", scope names any character a file name may have: any
// other character becomes "_uXXXX", and a reserved word, or a name that begins with "_" or
// has "__" (some of those are the implementation's), gets a "k" before it.
std::string KeyIdentifier(const std::u16string& key) {
    std::string identifier;
    for (const char16_t unit : key) {
        if (IsAsciiIdentifierCharacter(unit)) {
            identifier += static_cast<char>(unit);
        } else {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "_u%04X", static_cast<unsigned>(unit));
            identifier += escaped;
        }
    }
    if (kReserved.count(identifier) != 0 || identifier.find("__") != std::string::npos ||
        identifier.front() == '_') {
        identifier = "k" + identifier;
    }
    return identifier;
}

namespace {

bool IsNamespaceName(const std::string& name) {
    std::istringstream parts(name);
    std::string part;
    bool any = false;
    while (std::getline(parts, part, ':')) {
        if (part.empty()) {
            continue;  // the second ":" of "::"
        }
        any = true;
        if ((part.front() >= '0' && part.front() <= '9') || kReserved.count(part) != 0 ||
            !std::all_of(part.begin(), part.end(),
                         [](char c) { return IsAsciiIdentifierCharacter(c); })) {
            return false;
        }
    }
    return any && name.find(":::") == std::string::npos && name.front() != ':' &&
           name.back() != ':';
}

// A text for a line comment: UTF-8 where it can be (a lone surrogate from an escape cannot),
// and a control character (a carriage return would end the comment) written as "\xHH".
std::string CommentText(const std::u16string& text) {
    std::u16string shown;
    for (const char16_t unit : text) {
        if (unit < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned>(unit));
            shown += ulo::Utf8ToWide(escaped);
        } else {
            shown += unit;
        }
    }
    try {
        return ulo::WideToUtf8(shown);
    } catch (const std::exception&) {
        return Narrow(shown);
    }
}

// A string literal of C++ for `text` (UTF-8).
std::string Literal(const std::string& text) {
    std::string literal = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            literal += '\\';
        }
        literal += c;
    }
    return literal + "\"";
}

class Collector {
  public:
    Collector(const TreeModel& model, const KeyHeaderOptions& options)
        : model_(model), options_(options) {}

    std::vector<KeyConstant> Run() {
        const std::u16string referencePath =
            model_.ReferenceFile(options_.reference, options_.scope);
        if (referencePath.empty()) {
            throw KeyHeaderError("the reference has no texts of scope '" + options_.scope + "'");
        }
        const LocFile& reference = Loadable(referencePath, true);
        std::vector<const LocFile*> files{&reference};
        if (options_.scope != kCommonScope) {
            const std::u16string commonPath =
                model_.ReferenceFile(options_.reference, kCommonScope);
            if (!commonPath.empty()) {
                files.push_back(&Loadable(commonPath, true));
            }
        }
        std::vector<KeyConstant> keys;
        std::map<std::u16string, std::size_t> byKey;
        for (const LocFile* file : files) {
            for (const LocFile::IndexedEntry& entry : file->Entries()) {
                if (byKey.emplace(entry.lowerKey, keys.size()).second) {
                    keys.push_back(
                        {Narrow(entry.key),
                         KeyIdentifier(entry.key),
                         {},
                         CommentText(FormatValue(file->Dictionary()->at(entry.lowerKey)))});
                }
            }
        }
        for (const auto& [key, names] : Parameters()) {
            const auto found = byKey.find(key);
            if (found != byKey.end()) {
                for (const std::u16string& name : names) {
                    keys[found->second].parameters.push_back(Narrow(name));
                }
            }
        }
        CheckIdentifiers(keys);
        return keys;
    }

  private:
    const LocFile& Loadable(const std::u16string& path, bool required) {
        const LocFile& file = files_.Get(path);
        if (required && !file.Loadable()) {
            throw KeyHeaderError("the reference's file " + Narrow(path) +
                                 " cannot be loaded; \"locmgr check\" says why");
        }
        return file;
    }

    // What every culture's texts of the scope ask for, and the reference's.
    KeyParameters Parameters() {
        std::set<std::pair<std::u16string, std::u16string>> pairs;  // scope file, common file
        pairs.emplace(model_.ReferenceFile(options_.reference, options_.scope),
                      options_.scope == kCommonScope
                          ? std::u16string()
                          : model_.ReferenceFile(options_.reference, kCommonScope));
        for (const auto& [name, culture] : model_.Cultures()) {
            pairs.emplace(model_.ServingFile(options_.scope, culture),
                          options_.scope == kCommonScope
                              ? std::u16string()
                              : model_.ServingFile(kCommonScope, culture));
        }
        KeyParameters all;
        const auto add = [&all](const KeyParameters& some) {
            for (const auto& [key, names] : some) {
                all[key].insert(names.begin(), names.end());
            }
        };
        const CommonCompilation none{FileUse{}};
        for (const auto& [scopePath, commonPath] : pairs) {
            const LocFile* scope = scopePath.empty() ? nullptr : &Loadable(scopePath, false);
            const LocFile* common = commonPath.empty() ? nullptr : &Loadable(commonPath, false);
            const bool commonLoads = common != nullptr && common->Loadable();
            const CommonCompilation compilation(commonLoads ? FileUse{common, kCommonScope, {}}
                                                            : FileUse{});
            if (scope != nullptr && scope->Loadable()) {
                add(ExpandedParameters(*scope, compilation));
            }
            if (commonLoads) {
                add(ExpandedParameters(*common, none));
            }
        }
        return all;
    }

    static void CheckIdentifiers(const std::vector<KeyConstant>& keys) {
        std::map<std::string, std::string> seen;
        for (const KeyConstant& key : keys) {
            const auto [found, added] = seen.emplace(key.identifier, key.key);
            if (!added) {
                throw KeyHeaderError("the keys '" + found->second + "' and '" + key.key +
                                     "' would both be the constant " + key.identifier);
            }
        }
    }

    const TreeModel& model_;
    const KeyHeaderOptions& options_;
    LocFileCache files_;
};

}  // namespace

std::string ScopeNamespace(const std::string& scope) {
    std::string scopeNamespace;
    std::istringstream parts(scope);
    for (std::string part; std::getline(parts, part, '/');) {
        scopeNamespace += (scopeNamespace.empty() ? "" : "::") +
                          (part.empty() ? std::string("k") : KeyIdentifier(ulo::Utf8ToWide(part)));
    }
    return scopeNamespace;
}

std::vector<KeyConstant> KeyConstants(const TreeModel& model, const KeyHeaderOptions& options) {
    return Collector(model, options).Run();
}

std::string KeyHeader(const std::vector<KeyConstant>& keys, const KeyHeaderOptions& options) {
    if (!IsNamespaceName(options.nameSpace)) {
        throw KeyHeaderError("'" + options.nameSpace + "' is not a C++ namespace name");
    }
    const std::string scopeNamespace = ScopeNamespace(options.scope);
    std::ostringstream out;
    out << "// The keys of scope \"" << options.scope << "\""
        << (options.source.empty() ? "" : " of " + options.source)
        << ", with the parameters their texts ask for\n"
           "// in any culture. Written by \"locmgr keys\": write it again when the texts change.\n"
           "#pragma once\n\n"
           "#include \"localization_manager/host/TextKey.h\"\n\n"
           "#include <array>\n#include <string_view>\n\n"
        << "namespace " << options.nameSpace << "::" << scopeNamespace << " {\n\n"
        << "namespace parameters {\n";
    for (const KeyConstant& key : keys) {
        if (key.parameters.empty()) {
            continue;
        }
        out << "inline constexpr std::string_view " << key.identifier << "[] = {";
        for (std::size_t index = 0; index < key.parameters.size(); ++index) {
            out << (index == 0 ? "" : ", ") << Literal(key.parameters[index]);
        }
        out << "};\n";
    }
    out << "}  // namespace parameters\n\n";
    for (const KeyConstant& key : keys) {
        out << "// " << key.text << "\n"
            << "inline constexpr localization_manager::host::TextKey " << key.identifier << "{"
            << Literal(key.key);
        if (!key.parameters.empty()) {
            out << ", parameters::" << key.identifier << ", " << key.parameters.size();
        }
        out << "};\n";
    }
    out << "\n// Every key, for tests that go through them all.\n"
        << "inline constexpr std::array<localization_manager::host::TextKey, " << keys.size()
        << "> kAll{";
    for (std::size_t index = 0; index < keys.size(); ++index) {
        out << (index == 0 ? "" : ", ") << keys[index].identifier;
    }
    out << "};\n\n}  // namespace " << options.nameSpace << "::" << scopeNamespace << "\n";
    return out.str();
}

}  // namespace locmgr::analysis
