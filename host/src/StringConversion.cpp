#include "localization_manager/host/StringConversion.h"

#include "ulo/rtl/Utf8Decoder.h"

#include <cstddef>
#include <cstdint>

namespace localization_manager::host {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, std::uint32_t codePoint) {
    if (codePoint < 0x80u) {
        out.push_back(static_cast<char>(codePoint));
    } else if (codePoint < 0x800u) {
        out.push_back(static_cast<char>(0xC0u | (codePoint >> 6)));
        out.push_back(static_cast<char>(0x80u | (codePoint & 0x3Fu)));
    } else if (codePoint < 0x10000u) {
        out.push_back(static_cast<char>(0xE0u | (codePoint >> 12)));
        out.push_back(static_cast<char>(0x80u | ((codePoint >> 6) & 0x3Fu)));
        out.push_back(static_cast<char>(0x80u | (codePoint & 0x3Fu)));
    } else {
        out.push_back(static_cast<char>(0xF0u | (codePoint >> 18)));
        out.push_back(static_cast<char>(0x80u | ((codePoint >> 12) & 0x3Fu)));
        out.push_back(static_cast<char>(0x80u | ((codePoint >> 6) & 0x3Fu)));
        out.push_back(static_cast<char>(0x80u | (codePoint & 0x3Fu)));
    }
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view utf8) {
    // The module's own decoder, so that a host and the module read the same bytes as the same
    // text. It needs at most one unit a byte; its one failure, empty input, yields the right
    // length as well.
    std::u16string out(utf8.size(), u'\0');
    out.resize(ulo::DecodeUtf8(utf8.data(), utf8.size(), out.data(), out.size()));
    return out;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
    std::string out;
    out.reserve(utf16.size());
    for (std::size_t index = 0; index < utf16.size(); ++index) {
        const std::uint32_t unit = utf16[index];
        if (unit >= 0xD800u && unit <= 0xDBFFu && index + 1 < utf16.size() &&
            utf16[index + 1] >= 0xDC00u && utf16[index + 1] <= 0xDFFFu) {
            const std::uint32_t low = utf16[++index];
            AppendUtf8(out, 0x10000u + ((unit - 0xD800u) << 10) + (low - 0xDC00u));
        } else if (unit >= 0xD800u && unit <= 0xDFFFu) {
            AppendUtf8(out, kReplacement);
        } else {
            AppendUtf8(out, unit);
        }
    }
    return out;
}

ulo::string16_t ToFrameworkString(std::string_view utf8) {
    const std::u16string converted = Utf8ToUtf16(utf8);
    return ulo::string16_t(converted.data(), converted.size());
}

std::string ToUtf8(const ulo::string16_t& text) {
    return Utf16ToUtf8(std::u16string_view(text.c_str(), text.size()));
}

}  // namespace localization_manager::host
