#pragma once

// Installs a global locale for one scope (a test) and restores the previous one. A named
// locale also becomes the C library's, so iswspace and towlower follow it too.

#include <locale>

namespace LocalizationManager::Testing {

class GlobalLocale {
  public:
    explicit GlobalLocale(const std::locale& locale) : previous_(std::locale::global(locale)) {}
    ~GlobalLocale() { std::locale::global(previous_); }

    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

  private:
    std::locale previous_;
};

}  // namespace LocalizationManager::Testing
