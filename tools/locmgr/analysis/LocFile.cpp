#include "LocFile.h"

#include "File/FileStream.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <new>
#include <set>
#include <thread>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

constexpr char kDuplicateMessage[] = "duplicate key found";

// The text with the entries at `offsets` (up to where the next entry begins) replaced by
// blanks. Line breaks are kept, so every later position stays where it was.
std::u16string Blanked(const std::u16string& text,
                       const std::vector<std::pair<std::size_t, std::size_t>>& ranges) {
    std::u16string blanked = text;
    for (const auto& [begin, end] : ranges) {
        for (std::size_t offset = begin; offset < end && offset < blanked.size(); ++offset) {
            if (blanked[offset] != u'\n' && blanked[offset] != u'\r') {
                blanked[offset] = u' ';
            }
        }
    }
    return blanked;
}

bool ReadInt(const std::string& text, std::size_t at, int& value) {
    std::size_t position = at;
    long long number = 0;
    while (position < text.size() && text[position] >= '0' && text[position] <= '9' &&
           number < 1000000000) {
        number = number * 10 + (text[position] - '0');
        ++position;
    }
    value = static_cast<int>(number);
    return position > at;
}

}  // namespace

std::optional<TextPosition> PositionOfReport(const std::string& report) {
    const std::string firstLine = report.substr(0, report.find('\n'));
    if (firstLine.rfind("parse error at file ", 0) != 0) {
        return std::nullopt;
    }
    // From the end: the file name itself may hold " line ".
    const std::size_t column = firstLine.rfind(" column ");
    const std::size_t line =
        column == std::string::npos ? column : firstLine.rfind(" line ", column);
    TextPosition position;
    if (line == std::string::npos || !ReadInt(firstLine, line + 6, position.line) ||
        !ReadInt(firstLine, column + 8, position.column)) {
        return std::nullopt;
    }
    position.unitColumn = position.column;
    return position;
}

LocFile::LocFile(const std::u16string& path) : path_(path) {
    try {
        text_ = LocalizationManager::File::GetFileContent(path);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        readError_ = error.what();
    }
    map_ = std::make_unique<SourceMap>(text_);
    if (readError_.empty()) {
        Parse();
    }
}

ParseFailure LocFile::FailureOf(const std::string& report) const {
    ParseFailure failure{report, {0, 0, 0}};
    if (const auto position = PositionOfReport(report)) {
        failure.position = *position;
        failure.position.unitColumn = UnitColumnOf(text_, position->line, position->column);
    }
    return failure;
}

void LocFile::Parse() {
    auto dictionary = boost::make_shared<Model::ResourceDictionary>();
    std::string duplicateReport;
    try {
        Parsing::ParseLocFile(text_, path_, *dictionary);
        dictionary_ = dictionary;
        return;
    } catch (const Parsing::ParsingException& error) {
        duplicateReport = error.what();
        if (duplicateReport.rfind(kDuplicateMessage, 0) != 0) {
            parseError_ = FailureOf(duplicateReport);
            return;
        }
    }
    // Duplicates: all of them, from the map, and then the rest of the file with every second
    // definition left out, so that one run reports what the runtime would report one fix at a
    // time.
    std::map<std::u16string, const SourceEntry*> firstDefinitions;
    std::vector<std::pair<std::size_t, std::size_t>> repeated;
    for (const SourceEntry& entry : map_->Entries()) {
        const auto [first, inserted] = firstDefinitions.emplace(entry.lowerKey, &entry);
        if (!inserted) {
            duplicates_.push_back(
                {entry.lowerKey, entry.key, first->second->position, entry.position});
            repeated.emplace_back(entry.offset, entry.end);
        }
    }
    if (duplicates_.empty()) {
        // The map did not see what the parser saw; report the parser's words alone.
        parseError_ = ParseFailure{duplicateReport, {0, 0, 0}};
        return;
    }
    dictionary = boost::make_shared<Model::ResourceDictionary>();
    try {
        Parsing::ParseLocFile(Blanked(text_, repeated), path_, *dictionary);
        dictionary_ = dictionary;
    } catch (const Parsing::ParsingException& error) {
        const std::string report = error.what();
        if (report.rfind(kDuplicateMessage, 0) != 0) {
            parseError_ = FailureOf(report);
        }
    }
}

void LocFileCache::Load(const std::vector<std::u16string>& paths, unsigned threads,
                        const std::function<void(std::size_t done)>& progress) {
    std::vector<std::unique_ptr<LocFile>> loaded(paths.size());
    std::atomic<std::size_t> next{0};
    std::atomic<std::size_t> done{0};
    std::mutex failureMutex;
    std::exception_ptr failure;
    const auto work = [&] {
        for (std::size_t index = next++; index < paths.size(); index = next++) {
            try {
                loaded[index] = std::make_unique<LocFile>(paths[index]);
            } catch (...) {
                const std::lock_guard<std::mutex> lock(failureMutex);
                failure = std::current_exception();
                next = paths.size();
            }
            ++done;
        }
    };
    std::vector<std::thread> workers;
    for (unsigned worker = 1; worker < std::max(1u, threads); ++worker) {
        workers.emplace_back(work);
    }
    // The calling thread works too, and reports progress between its files.
    for (std::size_t index = next++; index < paths.size(); index = next++) {
        try {
            loaded[index] = std::make_unique<LocFile>(paths[index]);
        } catch (...) {
            const std::lock_guard<std::mutex> lock(failureMutex);
            failure = std::current_exception();
            next = paths.size();
        }
        ++done;
        if (progress) {
            progress(done);
        }
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
    for (std::size_t index = 0; index < paths.size(); ++index) {
        files_.emplace(paths[index], std::move(loaded[index]));
    }
}

const LocFile& LocFileCache::Get(const std::u16string& path) {
    auto found = files_.find(path);
    if (found == files_.end()) {
        found = files_.emplace(path, std::make_unique<LocFile>(path)).first;
    }
    return *found->second;
}

}  // namespace locmgr::analysis
