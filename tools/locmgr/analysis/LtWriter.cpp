#include "LtWriter.h"

#include "RegularFile.h"
#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Parsing/LocFileGrammar.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/format.hpp>
#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include <algorithm>
#include <cwctype>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

// The parser reads 1 to this many forms in a plural invocation.
constexpr std::size_t kMaxPluralForms = 6;

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr std::size_t kByteOrderMarkSize = sizeof kByteOrderMark - 1;

// Every refusal of this file, worded in one place.
namespace refusal {

std::string Quoted(const std::u16string& text) {
    return "'" + ulo::WideToNarrowMessage(text) + "'";
}

LtWriteError EmptyValue() {
    return LtWriteError("a value without operands cannot be written: a value holds at least one");
}
LtWriteError NotAReference(const std::u16string& key) {
    return LtWriteError("key reference " + Quoted(key) +
                        " cannot be written: a reference is a key in lower case");
}
LtWriteError NotAParameter(const std::u16string& name) {
    return LtWriteError("parameter name " + Quoted(name) + " cannot be written: it is not a key");
}
LtWriteError FormCount(const std::u16string& parameter, std::size_t count) {
    return LtWriteError((boost::format("plural invocation over $%1% with %2% forms cannot be "
                                       "written: it takes 1 to %3%") %
                         ulo::WideToNarrowMessage(parameter) % count % kMaxPluralForms)
                            .str());
}
LtWriteError Nesting() {
    return LtWriteError((boost::format("plural invocations nested more than %1% deep cannot be "
                                       "written: the parser refuses them") %
                         Parsing::kMaxPluralNesting)
                            .str());
}
LtWriteError NotAKey(const std::u16string& key) {
    return LtWriteError(Quoted(key) +
                        " is not a key: an ASCII letter or '_', then letters, digits and '_'");
}
LtWriteError NoEntry(const std::u16string& key) {
    return LtWriteError("no entry " + Quoted(key));
}
LtWriteError EntryExists(const std::u16string& key) {
    return LtWriteError("an entry " + Quoted(key) + " exists already");
}
LtWriteError DefinedTwice(const std::u16string& key) {
    return LtWriteError(Quoted(key) +
                        " is defined more than once: which definition to edit is not clear");
}
LtWriteError NotUtf8() {
    return LtWriteError("the file is not valid UTF-8: it could not be written back as it is");
}
LtWriteError LoneSurrogate(char16_t unit, std::size_t offset) {
    return LtWriteError((boost::format("the text holds a lone surrogate U+%04X at unit %d, "
                                       "which UTF-8 cannot encode") %
                         static_cast<unsigned>(unit) % offset)
                            .str());
}

}  // namespace refusal

bool IsKeyStart(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
}

bool IsKeyUnit(char16_t unit) {
    return IsKeyStart(unit) || (unit >= u'0' && unit <= u'9');
}

bool IsKey(const std::u16string& text) {
    return !text.empty() && IsKeyStart(text.front()) &&
           std::all_of(text.begin(), text.end(), IsKeyUnit);
}

bool IsLineBreak(char16_t unit) {
    return unit == u'\r' || unit == u'\n';
}

// Whitespace within a line, as the parser's skipper sees whitespace.
bool IsBlank(char16_t unit) {
    return !IsLineBreak(unit) && std::iswspace(static_cast<std::wint_t>(unit)) != 0;
}

bool IsOperandStart(char16_t unit) {
    return unit == u'\'' || unit == u'$' || unit == u'{' || IsKeyStart(unit);
}

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// A backslash reads as itself unless the parser can take it with what follows as an escape:
// "n", a backslash, an apostrophe. A backslash, an apostrophe, a line feed and the end of the
// text are all written starting with one of those.
bool BackslashNeedsEscape(const std::u16string& text, std::size_t next) {
    if (next == text.size()) {
        return true;
    }
    const char16_t unit = text[next];
    return unit == u'n' || unit == u'\\' || unit == u'\'' || unit == u'\n';
}

// A carriage return has no escape: it is written as it is, and the string goes on on the next
// line, which the parser reads back unchanged.
void AppendQuoted(const std::u16string& text, std::u16string& out) {
    out += u'\'';
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char16_t unit = text[index];
        if (unit == u'\'') {
            out += u"\\'";
        } else if (unit == u'\n') {
            out += u"\\n";
        } else if (unit == u'\\' && BackslashNeedsEscape(text, index + 1)) {
            out += u"\\\\";
        } else {
            out += unit;
        }
    }
    out += u'\'';
}

void AppendValue(const Model::Value& value, int nesting, std::u16string& out);

class OperandWriter : public boost::static_visitor<void> {
  public:
    OperandWriter(int nesting, std::u16string& out) : nesting_(nesting), out_(out) {}

    void operator()(const std::u16string& text) const { AppendQuoted(text, out_); }

    void operator()(const Model::KeyRef& reference) const {
        // The parser folds what it reads, so only a folded key reads back as written.
        if (!IsKey(reference.key) || Model::LowerCaseKey(reference.key) != reference.key) {
            throw refusal::NotAReference(reference.key);
        }
        out_ += reference.key;
    }

    void operator()(const Model::Param& param) const {
        if (!IsKey(param.name)) {
            throw refusal::NotAParameter(param.name);
        }
        out_ += u'$';
        out_ += param.name;
    }

    void operator()(const Model::PluralForm& plural) const {
        if (!IsKey(plural.param)) {
            throw refusal::NotAParameter(plural.param);
        }
        if (plural.forms.empty() || plural.forms.size() > kMaxPluralForms) {
            throw refusal::FormCount(plural.param, plural.forms.size());
        }
        // Checked before going deeper, so a hostile value cannot exhaust the stack here.
        if (nesting_ >= Parsing::kMaxPluralNesting) {
            throw refusal::Nesting();
        }
        out_ += u"{$";
        out_ += plural.param;
        out_ += u": ";
        for (std::size_t index = 0; index < plural.forms.size(); ++index) {
            if (index > 0) {
                out_ += u", ";
            }
            AppendValue(plural.forms[index], nesting_ + 1, out_);
        }
        out_ += u'}';
    }

  private:
    const int nesting_;  // plural invocations around the operand
    std::u16string& out_;
};

void AppendValue(const Model::Value& value, int nesting, std::u16string& out) {
    if (value.operands.empty()) {
        throw refusal::EmptyValue();
    }
    const OperandWriter writer(nesting, out);
    for (std::size_t index = 0; index < value.operands.size(); ++index) {
        if (index > 0) {
            out += u" + ";
        }
        boost::apply_visitor(writer, value.operands[index]);
    }
}

// The line break of the first line, so that inserted lines match the file.
std::u16string LineBreakOf(const std::u16string& text) {
    const std::size_t found = text.find_first_of(u"\r\n");
    if (found == std::u16string::npos || text[found] == u'\n') {
        return u"\n";
    }
    return found + 1 < text.size() && text[found + 1] == u'\n' ? u"\r\n" : u"\r";
}

bool AllBlank(const std::u16string& text, std::size_t begin, std::size_t end) {
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(begin),
                       text.begin() + static_cast<std::ptrdiff_t>(end), IsBlank);
}

// Appends a piece next to what an edit left before it. Two keys, or a reference and the key
// of the next entry, that came to touch would read as one key: a blank keeps them apart.
void Join(std::u16string& out, const std::u16string& piece) {
    if (!out.empty() && !piece.empty() && IsKeyUnit(out.back()) && IsKeyUnit(piece.front())) {
        out += u' ';
    }
    out += piece;
}

void CheckIndex(const std::u16string& text, const Parsing::SourceIndex& index) {
    std::size_t previousEnd = 0;
    for (const Parsing::IndexedEntry& entry : index.entries) {
        if (entry.span.begin.offset < previousEnd ||
            entry.span.begin.offset != entry.keySpan.begin.offset ||
            entry.keySpan.begin.offset >= entry.keySpan.end.offset ||
            entry.keySpan.end.offset >= entry.span.end.offset ||
            entry.span.end.offset > text.size() || entry.lowerKey.empty()) {
            throw std::invalid_argument("the source index does not fit the text");
        }
        previousEnd = entry.span.end.offset;
    }
    previousEnd = 0;
    for (const Parsing::SourceSpan& comment : index.comments) {
        if (comment.begin.offset < previousEnd || comment.begin.offset >= comment.end.offset ||
            comment.end.offset > text.size()) {
            throw std::invalid_argument("the source index does not fit the text");
        }
        previousEnd = comment.end.offset;
    }
}

// Where the value of an entry begins: after the "=", past the whitespace that may follow it.
std::size_t ValueBeginOf(const std::u16string& text, const Parsing::IndexedEntry& entry) {
    const std::size_t end = entry.span.end.offset;
    std::size_t position = text.find(u'=', entry.keySpan.end.offset);
    if (position < end) {
        ++position;
        while (position < end && !IsOperandStart(text[position])) {
            ++position;
        }
    }
    if (position >= end) {
        throw std::invalid_argument("the source index does not fit the text");
    }
    return position;
}

}  // namespace

std::u16string FormatValue(const Model::Value& value) {
    std::u16string out;
    AppendValue(value, 0, out);
    return out;
}

LtFileText DecodeLtFile(const std::string& bytes) {
    LtFileText file;
    std::string body = bytes;
    if (bytes.compare(0, kByteOrderMarkSize, kByteOrderMark) == 0) {
        file.byteOrderMark = true;
        body.erase(0, kByteOrderMarkSize);
    }
    try {
        file.text = ulo::Utf8ToWide(body);
        // The decoder lets some ill-formed sequences through (overlong forms, encoded
        // surrogates); encoding back shows them.
        if (ulo::WideToUtf8(file.text) != body) {
            throw refusal::NotUtf8();
        }
    } catch (const std::out_of_range&) {
        throw refusal::NotUtf8();
    }
    return file;
}

std::string EncodeLtFile(const LtFileText& file) {
    const std::u16string& text = file.text;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (IsHighSurrogate(text[index]) && index + 1 < text.size() &&
            IsLowSurrogate(text[index + 1])) {
            ++index;
        } else if (IsHighSurrogate(text[index]) || IsLowSurrogate(text[index])) {
            throw refusal::LoneSurrogate(text[index], index);
        }
    }
    return (file.byteOrderMark ? kByteOrderMark : "") + ulo::WideToUtf8(text);
}

LtFileText ReadLtFile(const std::u16string& path) {
    const std::string narrowPath = ulo::WideToUtf8(path);
    const std::optional<std::string> bytes = ReadRegularFile(narrowPath);
    if (!bytes) {
        throw LtWriteError("cannot read " + narrowPath + ": not a readable regular file");
    }
    return DecodeLtFile(*bytes);
}

void WriteLtFile(const std::u16string& path, const LtFileText& file) {
    const std::string bytes = EncodeLtFile(file);
    const std::filesystem::path target(ulo::WideToUtf8(path));
    std::error_code error;
    std::filesystem::create_directories(target.parent_path(), error);
    // Written beside the file, then renamed over it: an interrupted write leaves the old file.
    std::filesystem::path temporary = target;
    temporary += ".locmgr-new";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        if (!out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())) || !out.flush()) {
            std::filesystem::remove(temporary, error);
            throw LtWriteError("cannot write " + target.string());
        }
    }
    std::filesystem::rename(temporary, target, error);
    if (error) {
        std::filesystem::remove(temporary, error);
        throw LtWriteError("cannot write " + target.string());
    }
}

// What an edit puts in place of a part of the original text [begin, end).
struct LtEdit::Change {
    enum class Kind {
        kText,        // `text` as it is
        kOwnLine,     // `text` on a line of its own
        kBlankAfter,  // `text`, then a blank: the rest of its line follows
        kBlankBefore  // a blank, then `text`: it follows an entry on the same line
    };
    std::size_t begin;
    std::size_t end;
    Kind kind;
    std::u16string text;
};

// How an entry of the file sits in its lines.
struct LtEdit::EntryBounds {
    std::size_t lineBegin;    // of the line the entry starts in
    std::size_t blanksBegin;  // of the blanks before the entry on its line
    std::size_t blanksEnd;    // of the blanks after the entry
    std::size_t lineEnd;      // when it ends its line: past the line break, or the end of text
    bool startsLine;          // nothing but blanks before it on its first line
    bool endsLine;            // nothing but blanks and a comment after it on its last line
};

LtEdit::LtEdit(std::u16string text, Parsing::SourceIndex index)
    : text_(std::move(text)), index_(std::move(index)), lineBreak_(LineBreakOf(text_)) {
    CheckIndex(text_, index_);
    const std::size_t count = index_.entries.size();
    for (const Parsing::IndexedEntry& entry : index_.entries) {
        valueBegins_.push_back(ValueBeginOf(text_, entry));
    }
    newValues_.resize(count);
    removed_.resize(count, false);
    inserted_.resize(count + 1);
    for (std::size_t entry = 0; entry < count; ++entry) {
        places_.emplace(index_.entries[entry].lowerKey, Place{entry, false});
    }
    for (const Parsing::DuplicateDefinition& duplicate : index_.duplicates) {
        definedTwice_.insert(duplicate.lowerKey);
    }
}

bool LtEdit::Contains(const std::u16string& key) const {
    return places_.count(Model::LowerCaseKey(key)) != 0;
}

const LtEdit::Place& LtEdit::Find(const std::u16string& key) const {
    const std::u16string lowerKey = Model::LowerCaseKey(key);
    if (definedTwice_.count(lowerKey) != 0) {
        throw refusal::DefinedTwice(key);
    }
    const auto found = places_.find(lowerKey);
    if (found == places_.end()) {
        throw refusal::NoEntry(key);
    }
    return found->second;
}

void LtEdit::Replace(const std::u16string& key, const Model::Value& value) {
    const Place place = Find(key);
    std::u16string text = FormatValue(value);
    if (!place.inserted) {
        newValues_[place.group] = std::move(text);
        return;
    }
    const std::u16string lowerKey = Model::LowerCaseKey(key);
    for (Inserted& inserted : inserted_[place.group]) {
        if (inserted.lowerKey == lowerKey) {
            inserted.value = std::move(text);
        }
    }
}

void LtEdit::InsertAfter(const std::u16string& anchorKey, const std::u16string& key,
                         const Model::Value& value) {
    const Place anchor = Find(anchorKey);
    std::size_t position = 0;
    if (anchor.inserted) {
        const std::u16string lowerAnchor = Model::LowerCaseKey(anchorKey);
        const std::vector<Inserted>& group = inserted_[anchor.group];
        while (group[position].lowerKey != lowerAnchor) {
            ++position;
        }
        ++position;
    }
    Insert(anchor.group, position, key, value);
}

void LtEdit::Append(const std::u16string& key, const Model::Value& value) {
    Insert(index_.entries.size(), inserted_.back().size(), key, value);
}

void LtEdit::Insert(std::size_t group, std::size_t position, const std::u16string& key,
                    const Model::Value& value) {
    if (!IsKey(key)) {
        throw refusal::NotAKey(key);
    }
    std::u16string lowerKey = Model::LowerCaseKey(key);
    if (places_.count(lowerKey) != 0) {
        throw refusal::EntryExists(key);
    }
    Inserted inserted{key, lowerKey, FormatValue(value)};
    std::vector<Inserted>& entries = inserted_[group];
    entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(position), std::move(inserted));
    places_.emplace(std::move(lowerKey), Place{group, true});
}

void LtEdit::Remove(const std::u16string& key) {
    const Place place = Find(key);
    const std::u16string lowerKey = Model::LowerCaseKey(key);
    if (place.inserted) {
        std::vector<Inserted>& group = inserted_[place.group];
        group.erase(std::find_if(group.begin(), group.end(), [&](const Inserted& inserted) {
            return inserted.lowerKey == lowerKey;
        }));
    } else {
        removed_[place.group] = true;
    }
    places_.erase(lowerKey);
}

// The first comment that begins at or after `offset`, or null.
const Parsing::SourceSpan* LtEdit::FirstCommentFrom(std::size_t offset) const {
    const auto found = std::lower_bound(index_.comments.begin(), index_.comments.end(), offset,
                                        [](const Parsing::SourceSpan& comment, std::size_t at) {
                                            return comment.begin.offset < at;
                                        });
    return found != index_.comments.end() ? &*found : nullptr;
}

LtEdit::EntryBounds LtEdit::BoundsOf(std::size_t entry) const {
    const Parsing::SourceSpan& span = index_.entries[entry].span;
    EntryBounds bounds{};
    bounds.blanksBegin = span.begin.offset;
    while (bounds.blanksBegin > 0 && IsBlank(text_[bounds.blanksBegin - 1])) {
        --bounds.blanksBegin;
    }
    bounds.lineBegin = bounds.blanksBegin;
    while (bounds.lineBegin > 0 && !IsLineBreak(text_[bounds.lineBegin - 1])) {
        --bounds.lineBegin;
    }
    bounds.startsLine = bounds.lineBegin == bounds.blanksBegin;

    bounds.blanksEnd = span.end.offset;
    while (bounds.blanksEnd < text_.size() && IsBlank(text_[bounds.blanksEnd])) {
        ++bounds.blanksEnd;
    }
    std::size_t position = bounds.blanksEnd;
    const Parsing::SourceSpan* comment = FirstCommentFrom(position);
    if (comment != nullptr && comment->begin.offset == position) {
        position = comment->end.offset;
    }
    bounds.endsLine = position == text_.size() || IsLineBreak(text_[position]);
    if (position < text_.size() && text_[position] == u'\r') {
        ++position;
    }
    if (position < text_.size() && text_[position] == u'\n') {
        ++position;
    }
    bounds.lineEnd = position;
    return bounds;
}

// A line that holds a comment and nothing else but blanks. The index, not the text, tells a
// comment from a ";" inside a quoted string that spans lines.
bool LtEdit::IsCommentLine(std::size_t lineBegin, std::size_t lineEnd) const {
    const Parsing::SourceSpan* comment = FirstCommentFrom(lineBegin);
    return comment != nullptr && comment->begin.offset < lineEnd &&
           AllBlank(text_, lineBegin, comment->begin.offset);
}

// The start of the comment lines right above the line at `lineBegin` (that line itself when
// none is).
std::size_t LtEdit::CommentLinesAbove(std::size_t lineBegin) const {
    while (lineBegin > 0) {
        std::size_t previousEnd = lineBegin - 1;  // at the line break of the line above
        if (text_[previousEnd] == u'\n' && previousEnd > 0 && text_[previousEnd - 1] == u'\r') {
            --previousEnd;
        }
        std::size_t previousBegin = previousEnd;
        while (previousBegin > 0 && !IsLineBreak(text_[previousBegin - 1])) {
            --previousBegin;
        }
        if (!IsCommentLine(previousBegin, previousEnd)) {
            break;
        }
        lineBegin = previousBegin;
    }
    return lineBegin;
}

LtEdit::Change LtEdit::Removal(std::size_t entry) const {
    const EntryBounds bounds = BoundsOf(entry);
    const Parsing::SourceSpan& span = index_.entries[entry].span;
    if (bounds.startsLine && bounds.endsLine) {
        return {CommentLinesAbove(bounds.lineBegin), bounds.lineEnd, Change::Kind::kText, {}};
    }
    // Sharing a line with another entry: only the entry and the blanks that parted them go.
    if (!bounds.endsLine) {
        return {span.begin.offset, bounds.blanksEnd, Change::Kind::kText, {}};
    }
    return {bounds.blanksBegin, span.end.offset, Change::Kind::kText, {}};
}

void LtEdit::AddInsertions(std::size_t group, std::vector<Change>& changes) const {
    if (inserted_[group].empty()) {
        return;
    }
    std::size_t at = text_.size();
    Change::Kind kind = Change::Kind::kOwnLine;
    if (group < index_.entries.size()) {
        const EntryBounds bounds = BoundsOf(group);
        const Parsing::SourceSpan& span = index_.entries[group].span;
        if (bounds.endsLine) {
            at = bounds.lineEnd;
        } else if (removed_[group]) {
            // In place of the entry, before the one that follows it on the line.
            at = span.begin.offset;
            kind = Change::Kind::kBlankAfter;
        } else {
            at = span.end.offset;
            kind = Change::Kind::kBlankBefore;
        }
    }
    for (const Inserted& inserted : inserted_[group]) {
        changes.push_back({at, at, kind, inserted.key + u" = " + inserted.value});
    }
}

std::u16string LtEdit::Text() const {
    std::vector<Change> changes;
    for (std::size_t entry = 0; entry < index_.entries.size(); ++entry) {
        if (removed_[entry]) {
            changes.push_back(Removal(entry));
        } else if (newValues_[entry]) {
            changes.push_back({valueBegins_[entry], index_.entries[entry].span.end.offset,
                               Change::Kind::kText, *newValues_[entry]});
        }
        AddInsertions(entry, changes);
    }
    AddInsertions(index_.entries.size(), changes);
    // Insertions at a place come before a removal that starts there, each in the order made.
    std::stable_sort(changes.begin(), changes.end(), [](const Change& left, const Change& right) {
        return left.begin < right.begin || (left.begin == right.begin && left.end < right.end);
    });

    std::u16string out;
    out.reserve(text_.size());
    std::size_t kept = 0;  // the original text up to here is written or replaced
    for (const Change& change : changes) {
        if (change.begin > kept) {
            Join(out, text_.substr(kept, change.begin - kept));
        }
        switch (change.kind) {
            case Change::Kind::kText:
                Join(out, change.text);
                break;
            case Change::Kind::kOwnLine:
                // A file that does not end in a line break keeps not ending in one.
                if (out.empty() || IsLineBreak(out.back())) {
                    out += change.text + lineBreak_;
                } else {
                    out += lineBreak_ + change.text;
                }
                break;
            case Change::Kind::kBlankAfter:
                Join(out, change.text + u' ');
                break;
            case Change::Kind::kBlankBefore:
                out += u' ' + change.text;
                break;
        }
        kept = std::max(kept, change.end);
    }
    if (kept < text_.size()) {
        Join(out, text_.substr(kept));
    }
    return out;
}

}  // namespace locmgr::analysis
