#include "LocFile.h"

#include "File/FileStream.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "ulo/rtl/MessageError.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <new>
#include <thread>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

std::u16string ReadText(const std::u16string& path, std::string& readError) {
    try {
        return LocalizationManager::File::GetFileContent(path);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        readError = ulo::FullMessage(error);
        return std::u16string();
    }
}

}  // namespace

LocFile::LocFile(const std::u16string& path)
    : path_(path), text_(ReadText(path, readError_)), lines_(text_) {
    if (readError_.empty()) {
        Parse();
    }
}

void LocFile::Parse() {
    auto dictionary = boost::make_shared<Model::ResourceDictionary>();
    try {
        // One parse gives the runtime's verdict, every duplicate and where everything stands.
        Parsing::ParseLocFileIndexed(text_, path_, *dictionary, index_);
    } catch (const Parsing::ParsingException& error) {
        const Parsing::SyntaxError* syntax = error.Syntax();
        ParseFailure failure{std::string(ulo::FullMessage(error)), {}, {0, 0, 0}};
        if (syntax != nullptr) {
            failure.expectation = ulo::WideToNarrowMessage(Parsing::RenderExpectation(*syntax));
            failure.position =
                lines_.PositionOf({syntax->offset, static_cast<std::uint32_t>(syntax->line),
                                   static_cast<std::uint32_t>(syntax->column)});
        }
        parseError_ = std::move(failure);
    }
    if (!parseError_) {
        dictionary_ = dictionary;
    }
    for (const Parsing::DuplicateDefinition& duplicate : index_.duplicates) {
        duplicates_.push_back({duplicate.lowerKey, duplicate.writtenKey,
                               lines_.PositionOf(duplicate.firstKey.begin),
                               lines_.PositionOf(duplicate.secondKey.begin)});
    }
    entriesByKey_.resize(index_.entries.size());
    for (std::uint32_t entry = 0; entry < entriesByKey_.size(); ++entry) {
        entriesByKey_[entry] = entry;
    }
    std::stable_sort(entriesByKey_.begin(), entriesByKey_.end(),
                     [this](std::uint32_t left, std::uint32_t right) {
                         return index_.entries[left].lowerKey < index_.entries[right].lowerKey;
                     });
}

const LocFile::IndexedEntry* LocFile::FindEntry(const std::u16string& lowerKey) const {
    const auto found = std::lower_bound(entriesByKey_.begin(), entriesByKey_.end(), lowerKey,
                                        [this](std::uint32_t entry, const std::u16string& key) {
                                            return index_.entries[entry].lowerKey < key;
                                        });
    if (found == entriesByKey_.end() || index_.entries[*found].lowerKey != lowerKey) {
        return nullptr;
    }
    return &index_.entries[*found];
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

const LocFile* LocFileCache::Loadable(const std::u16string& path) {
    if (path.empty()) {
        return nullptr;
    }
    const LocFile& file = Get(path);
    return file.Loadable() ? &file : nullptr;
}

}  // namespace locmgr::analysis
