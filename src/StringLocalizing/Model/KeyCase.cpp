#include "StringLocalizing/Model/KeyCase.h"

#include <algorithm>

namespace LocalizationManager::StringLocalizing::Model {

namespace {

bool IsSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

// There is no ctype facet for char16_t; the wide facet covers every basic-plane unit because
// wchar_t is wider than 16 bits here.
const std::ctype<wchar_t>& WideCaseFacet(const std::locale& locale) {
    return std::use_facet<std::ctype<wchar_t>>(locale);
}

char16_t FoldUnit(const std::ctype<wchar_t>& facet, char16_t unit) {
    return IsSurrogate(unit) ? unit
                             : static_cast<char16_t>(facet.tolower(static_cast<wchar_t>(unit)));
}

}  // namespace

std::u16string LowerCaseKey(const std::u16string& key) {
    const std::locale locale;
    const std::ctype<wchar_t>& facet = WideCaseFacet(locale);
    std::u16string lowered(key);
    for (char16_t& unit : lowered) {
        unit = FoldUnit(facet, unit);
    }
    return lowered;
}

KeyCaseFolder::KeyCaseFolder() : facet_(WideCaseFacet(locale_)) {
    for (std::size_t unit = 0; unit < kAsciiUnits; ++unit) {
        asciiFolded_[unit] = FoldUnit(facet_, static_cast<char16_t>(unit));
    }
}

char16_t* FoldedKeyBuffer::Room(std::size_t units) {
    if (units <= kInlineUnits) {
        return inline_;
    }
    heap_.resize(units);
    return heap_.data();
}

template <typename Room>
std::u16string_view KeyCaseFolder::FoldInto(std::u16string_view key, Room room) const {
    // Comparing locales is cheap while the global one is still the one of construction, which
    // is nearly always; after a change the table no longer applies.
    const std::locale current;
    if (current != locale_) {
        const std::ctype<wchar_t>& facet = WideCaseFacet(current);
        char16_t* const folded = room(key.size());
        for (std::size_t index = 0; index < key.size(); ++index) {
            folded[index] = FoldUnit(facet, key[index]);
        }
        return {folded, key.size()};
    }

    const auto fold = [this](char16_t unit) {
        return unit < kAsciiUnits ? asciiFolded_[unit] : FoldUnit(facet_, unit);
    };
    // Keys are nearly always ASCII and already folded: that is settled by the table alone.
    std::size_t first = 0;
    while (first < key.size() && key[first] < kAsciiUnits &&
           asciiFolded_[key[first]] == key[first]) {
        ++first;
    }
    while (first < key.size() && fold(key[first]) == key[first]) {
        ++first;
    }
    if (first == key.size()) {
        return key;
    }
    char16_t* const folded = room(key.size());
    std::copy(key.begin(), key.begin() + first, folded);
    for (std::size_t index = first; index < key.size(); ++index) {
        folded[index] = fold(key[index]);
    }
    return {folded, key.size()};
}

std::u16string_view KeyCaseFolder::Fold(std::u16string_view key, std::u16string& buffer) const {
    return FoldInto(key, [&buffer](std::size_t units) {
        buffer.resize(units);
        return buffer.data();
    });
}

std::u16string_view KeyCaseFolder::Fold(std::u16string_view key, FoldedKeyBuffer& buffer) const {
    return FoldInto(key, [&buffer](std::size_t units) { return buffer.Room(units); });
}

}  // namespace LocalizationManager::StringLocalizing::Model
