#pragma once

#include <array>
#include <locale>
#include <string>
#include <string_view>

namespace LocalizationManager::StringLocalizing::Model {

// Folds a key to lower case: each UTF-16 unit goes through the wide lower-case function of the
// process's current global locale on its own; surrogate units are left unchanged. Nothing
// else is done (no trimming, no normalisation). Applied to dictionary keys and to the key of
// every KeyRef, never to parameter names.
std::u16string LowerCaseKey(const std::u16string& key);

// Room for one folded key: a key of ordinary length folds into the object itself, so that a
// request that keeps one on its stack folds its key without allocating; longer keys go to the
// heap. One key at a time.
class FoldedKeyBuffer {
  public:
    FoldedKeyBuffer() = default;
    FoldedKeyBuffer(const FoldedKeyBuffer&) = delete;
    FoldedKeyBuffer& operator=(const FoldedKeyBuffer&) = delete;

    // Room for `units` units, valid until the next call.
    char16_t* Room(std::size_t units);

  private:
    static constexpr std::size_t kInlineUnits = 64;

    char16_t inline_[kInlineUnits];
    std::u16string heap_;
};

// Folds many keys exactly as LowerCaseKey does, without its cost per key: the folding of the
// ASCII units under the global locale of the moment of construction is worked out once, and a
// key that folding leaves as it is is not copied. Each call checks that the global locale is
// still that one; when it has changed since, the call folds under the new one, as
// LowerCaseKey would. Immutable once made; concurrent calls are safe.
class KeyCaseFolder {
  public:
    KeyCaseFolder();

    // The folded form of `key`: `key` itself when folding changes no unit, otherwise `buffer`,
    // which then holds it. Allocates only when `buffer` must grow.
    std::u16string_view Fold(std::u16string_view key, std::u16string& buffer) const;
    // The same, `buffer` holding the folded form when folding changes a unit.
    std::u16string_view Fold(std::u16string_view key, FoldedKeyBuffer& buffer) const;

  private:
    // Fold, the folded form written to room(size).
    template <typename Room>
    std::u16string_view FoldInto(std::u16string_view key, Room room) const;

    static constexpr std::size_t kAsciiUnits = 128;

    // The locale whose folding the table holds, and its facet for the other units.
    const std::locale locale_;
    const std::ctype<wchar_t>& facet_;
    std::array<char16_t, kAsciiUnits> asciiFolded_;
};

}  // namespace LocalizationManager::StringLocalizing::Model
