#pragma once

// One localization file as the runtime reads it: decoded by the runtime's file reader and
// parsed by the engine's parser, which also records where each part of the file stands.

#include "StringLocalizing/Model/ResourceDictionary.h"
#include "StringLocalizing/Parsing/SourceIndex.h"
#include "TextPosition.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace locmgr::analysis {

// A parse error as the runtime reports it.
struct ParseFailure {
    std::string report;       // the ParsingException's message, exactly
    std::string expectation;  // "expecting <value> here", as the report ends
    TextPosition position;
};

struct DuplicateDefinition {
    std::u16string lowerKey;
    std::u16string writtenKey;  // as the second definition writes it
    TextPosition first;
    TextPosition second;
};

class LocFile {
  public:
    using IndexedEntry = LocalizationManager::StringLocalizing::Parsing::IndexedEntry;
    using SourcePoint = LocalizationManager::StringLocalizing::Parsing::SourcePoint;

    // Reads and parses `path`; never throws for a bad file, only for a lack of memory.
    explicit LocFile(const std::u16string& path);

    const std::u16string& Path() const { return path_; }
    const std::u16string& Text() const { return text_; }
    // Why the file could not be read (the runtime's message), or empty.
    const std::string& ReadError() const { return readError_; }
    // The syntax error the runtime stops at.
    const std::optional<ParseFailure>& ParseError() const { return parseError_; }
    // Every key defined more than once; the runtime stops at the first.
    const std::vector<DuplicateDefinition>& Duplicates() const { return duplicates_; }
    // Whether the runtime can load this file at all.
    bool Loadable() const { return readError_.empty() && !parseError_ && duplicates_.empty(); }

    // The entries, for the checks that look into them: the whole file when it parses, the
    // first definition of each key when it parses but for its duplicates; null otherwise.
    const boost::shared_ptr<const LocalizationManager::StringLocalizing::Model::ResourceDictionary>&
    Dictionary() const {
        return dictionary_;
    }

    // Where the entries stand, in file order, second definitions included.
    const std::vector<IndexedEntry>& Entries() const { return index_.entries; }
    // Where the comments stand, in file order.
    const std::vector<LocalizationManager::StringLocalizing::Parsing::SourceSpan>& Comments()
        const {
        return index_.comments;
    }
    // The first definition of `lowerKey`, or nullptr.
    const IndexedEntry* FindEntry(const std::u16string& lowerKey) const;
    TextPosition PositionOf(const SourcePoint& point) const { return lines_.PositionOf(point); }

  private:
    void Parse();

    std::u16string path_;
    std::string readError_;  // filled while text_ is read
    std::u16string text_;
    std::optional<ParseFailure> parseError_;
    std::vector<DuplicateDefinition> duplicates_;
    boost::shared_ptr<const LocalizationManager::StringLocalizing::Model::ResourceDictionary>
        dictionary_;
    LocalizationManager::StringLocalizing::Parsing::SourceIndex index_;
    // Indices into index_.entries in the order of their keys, each key's first definition first.
    std::vector<std::uint32_t> entriesByKey_;
    LineStarts lines_;
};

// Every file read once, however many cultures it serves.
class LocFileCache {
  public:
    const LocFile& Get(const std::u16string& path);
    // The file at `path` when the runtime can load it; null for it otherwise and for no path.
    const LocFile* Loadable(const std::u16string& path);

    // Reads and parses `paths` on up to `threads` threads (parsing dominates a check of a
    // large tree, and files are independent), calling `progress` with the count done so far
    // from the calling thread.
    void Load(const std::vector<std::u16string>& paths, unsigned threads,
              const std::function<void(std::size_t done)>& progress);

  private:
    std::map<std::u16string, std::unique_ptr<LocFile>> files_;
};

}  // namespace locmgr::analysis
