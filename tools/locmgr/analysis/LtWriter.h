#pragma once

// Writing localization files: the source text of a value, and edits of a file that keep
// everything they do not change byte for byte (comments, blank lines, order, how untouched
// entries are written, the file's line breaks). Commands that change files write through
// here, so that what they write is what the runtime reads back.

#include "StringLocalizing/Model/Value.h"
#include "StringLocalizing/Parsing/SourceIndex.h"
#include "ulo/rtl/MessageError.h"

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace locmgr::analysis {

// A value, key or file that cannot be written so that it reads back exactly, or an edit that
// names an entry the file does not have (or has more than once).
class LtWriteError : public ulo::MessageError {
  public:
    using ulo::MessageError::MessageError;
};

// The source text of `value` as it stands after "key = ": parsing "key = " followed by it
// gives a value equal to `value`. Operands are joined by " + ", texts quoted, plural
// invocations written "{$n: form, form}". A backslash is written doubled only where it would
// otherwise start an escape, so paths read as typed.
//
// Throws LtWriteError for what the parser can never produce: a value or plural form without
// operands, a reference that is not a key in lower case, a parameter name that is not a key,
// a plural invocation with no form or more than six, invocations nested deeper than the
// parser accepts.
std::u16string FormatValue(const LocalizationManager::StringLocalizing::Model::Value& value);

// A localization file as stored: UTF-8, with or without a byte order mark.
struct LtFileText {
    std::u16string text;  // what the parser reads
    bool byteOrderMark = false;
};

// Splits the bytes of a file into its text and its mark. Throws LtWriteError when the bytes
// are not UTF-8 that encodes back to the same bytes (malformed or overlong sequences, encoded
// surrogates): the runtime reads those as U+FFFD, and writing the file would change it.
LtFileText DecodeLtFile(const std::string& bytes);

// The bytes of a file: the mark if it had one, then the text in UTF-8. Throws LtWriteError for
// a surrogate that is not part of a pair, which UTF-8 cannot encode.
std::string EncodeLtFile(const LtFileText& file);

// The file at `path`, decoded as DecodeLtFile does. Throws LtWriteError when it is not a
// regular file, cannot be read, or does not decode exactly.
LtFileText ReadLtFile(const std::u16string& path);

// Writes `file` to `path`, creating its folders: first beside it, then renamed over it, so
// that a write that fails leaves the old file as it was. Throws LtWriteError.
void WriteLtFile(const std::u16string& path, const LtFileText& file);

// Edits of one file's text: replace an entry's value, insert entries, remove entries; Text()
// gives the edited file. Keys are matched case-insensitively, as the runtime matches them.
// Entries are those of the file and those inserted so far; a removed entry is gone. Each
// edit is checked before anything changes, so a throwing call leaves the edit as it was.
//
// A key the file defines more than once cannot be edited (which definition is meant is not
// clear): such calls throw LtWriteError, as does a key no entry has. An edit owns copies of
// the text and the index; it serves one caller at a time.
class LtEdit {
  public:
    // `index` is what ParseLocFileIndexed recorded for `text`, a text that parsed. Throws
    // std::invalid_argument when the index does not fit the text.
    LtEdit(std::u16string text, LocalizationManager::StringLocalizing::Parsing::SourceIndex index);

    bool Contains(const std::u16string& key) const;

    // The key as written, the "=" and the blanks around it stay; the value is written anew.
    void Replace(const std::u16string& key,
                 const LocalizationManager::StringLocalizing::Model::Value& value);

    // Writes "key = value" right after the entry of `anchorKey` (after its line, or on its
    // line when another entry follows there). Throws LtWriteError when `key` is not a key or
    // an entry has it already.
    void InsertAfter(const std::u16string& anchorKey, const std::u16string& key,
                     const LocalizationManager::StringLocalizing::Model::Value& value);
    // The same at the end of the file.
    void Append(const std::u16string& key,
                const LocalizationManager::StringLocalizing::Model::Value& value);

    // Removes the entry; when it has its lines to itself, those lines go, with the comment
    // lines directly above it.
    void Remove(const std::u16string& key);

    // The edited text, in the file's line breaks (those of its first line; a line feed when
    // it has none).
    std::u16string Text() const;

  private:
    struct Inserted {
        std::u16string key;  // as the caller wrote it
        std::u16string lowerKey;
        std::u16string value;  // as FormatValue writes it
    };
    struct Change;
    // Where an entry of the edited file stands: in the file (`group` is its index there) or
    // among the entries inserted after file entry `group` (the end of the file when `group`
    // equals the number of entries).
    struct Place {
        std::size_t group;
        bool inserted;
    };
    struct EntryBounds;

    const Place& Find(const std::u16string& key) const;
    void Insert(std::size_t group, std::size_t position, const std::u16string& key,
                const LocalizationManager::StringLocalizing::Model::Value& value);
    EntryBounds BoundsOf(std::size_t entry) const;
    const LocalizationManager::StringLocalizing::Parsing::SourceSpan* FirstCommentFrom(
        std::size_t offset) const;
    bool IsCommentLine(std::size_t lineBegin, std::size_t lineEnd) const;
    std::size_t CommentLinesAbove(std::size_t lineBegin) const;
    Change Removal(std::size_t entry) const;
    void AddInsertions(std::size_t group, std::vector<Change>& changes) const;

    const std::u16string text_;
    const LocalizationManager::StringLocalizing::Parsing::SourceIndex index_;
    const std::u16string lineBreak_;
    // Per entry of the file: where its value begins, its new value when replaced, and
    // whether it is removed.
    std::vector<std::size_t> valueBegins_;
    std::vector<std::optional<std::u16string>> newValues_;
    std::vector<bool> removed_;
    // Per entry of the file, then one for the end of the file: what was inserted after it.
    std::vector<std::vector<Inserted>> inserted_;
    std::map<std::u16string, Place> places_;  // by lower-cased key
    std::set<std::u16string> definedTwice_;
};

}  // namespace locmgr::analysis
