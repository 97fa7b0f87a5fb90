#pragma once

// A parameter resolver for tests: answers from a map, records every name it was asked for and
// throws std::out_of_range ("no parameter '<name>'") for a name it does not hold.

#include "StringLocalizing/Resolving/IParamResolver.h"
#include "ulo/rtl/TextConversion.h"

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace LocalizationManager::Testing {

class FakeParamResolver : public StringLocalizing::Resolving::IParamResolver {
  public:
    FakeParamResolver() = default;
    explicit FakeParamResolver(std::map<std::u16string, std::u16string> values)
        : values_(std::move(values)) {}

    std::u16string ResolveParam(const std::u16string& name) override {
        asked_.push_back(name);
        const auto position = values_.find(name);
        if (position == values_.end()) {
            throw std::out_of_range("no parameter '" + ulo::WideToUtf8(name) + "'");
        }
        return position->second;
    }

    void Set(const std::u16string& name, const std::u16string& value) { values_[name] = value; }
    const std::vector<std::u16string>& Asked() const { return asked_; }

  private:
    std::map<std::u16string, std::u16string> values_;
    std::vector<std::u16string> asked_;
};

}  // namespace LocalizationManager::Testing
