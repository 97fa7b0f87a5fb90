#pragma once

#include "StringLocalizing/Model/CompactTexts.h"
#include "StringLocalizing/Model/ResourceDictionary.h"

#include <string_view>

namespace LocalizationManager::StringLocalizing::Parsing {

// Where the grammar puts each entry as soon as it is parsed: the dictionary that tools and the
// compiler's tests work on, or the compact store of the runtime. Both refuse the same key
// defined twice, so a file fails the same way whichever it is parsed into: the dictionary at
// once, the store when the parse ends (see ParseLocFile).
class EntrySink {
  public:
    // Adds an entry under `lowerKey` (already lower-cased), taking over `value`. A key already
    // present throws DuplicateKeyException and leaves the store and `value` as they were.
    virtual void Add(std::u16string_view lowerKey, Model::Value&& value) = 0;

    // Add for a value of one text, which `text` holds where the parsed text writes it (no
    // escapes).
    virtual void AddPlain(std::u16string_view lowerKey, std::u16string_view text) = 0;

    // Called once the parse has reached the end of the text. Throws DuplicateKeyException for
    // the first key, in file order, that was defined before, if the sink did not throw it at
    // once.
    virtual void Finish() = 0;

  protected:
    EntrySink() = default;
    EntrySink(const EntrySink&) = default;
    EntrySink& operator=(const EntrySink&) = default;
    ~EntrySink() = default;
};

class DictionarySink final : public EntrySink {
  public:
    explicit DictionarySink(Model::ResourceDictionary& dictionary) : dictionary_(dictionary) {}
    void Add(std::u16string_view lowerKey, Model::Value&& value) override;
    void AddPlain(std::u16string_view lowerKey, std::u16string_view text) override;
    void Finish() override {}

  private:
    Model::ResourceDictionary& dictionary_;
};

class CompactTextsSink final : public EntrySink {
  public:
    explicit CompactTextsSink(Model::CompactTexts& texts) : texts_(texts) {}
    void Add(std::u16string_view lowerKey, Model::Value&& value) override;
    void AddPlain(std::u16string_view lowerKey, std::u16string_view text) override;
    // Seals the store.
    void Finish() override;

  private:
    Model::CompactTexts& texts_;
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
