#include "localization_manager/host/StringConversion.h"

#include <cstddef>
#include <cstdint>

namespace localization_manager::host {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0u) == 0x80u;
}

void AppendCodePoint(std::u16string& out, std::uint32_t codePoint) {
    if (codePoint < 0x10000u) {
        out.push_back(static_cast<char16_t>(codePoint));
        return;
    }
    codePoint -= 0x10000u;
    out.push_back(static_cast<char16_t>(0xD800u + (codePoint >> 10)));
    out.push_back(static_cast<char16_t>(0xDC00u + (codePoint & 0x3FFu)));
}

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

// How a lead byte goes on: the sequence length, the bits it contributes, and the range of the
// second byte. Restricting the second byte is what refuses overlong forms, encoded surrogates
// and values above U+10FFFF without decoding them first.
struct LeadByte {
    std::size_t length;
    std::uint32_t bits;
    unsigned char secondLow;
    unsigned char secondHigh;
};

bool Classify(unsigned char lead, LeadByte& info) {
    if (lead >= 0xC2u && lead <= 0xDFu) {
        info = {2, lead & 0x1Fu, 0x80u, 0xBFu};
    } else if (lead == 0xE0u) {
        info = {3, lead & 0x0Fu, 0xA0u, 0xBFu};
    } else if (lead == 0xEDu) {
        info = {3, lead & 0x0Fu, 0x80u, 0x9Fu};
    } else if (lead >= 0xE1u && lead <= 0xEFu) {
        info = {3, lead & 0x0Fu, 0x80u, 0xBFu};
    } else if (lead == 0xF0u) {
        info = {4, lead & 0x07u, 0x90u, 0xBFu};
    } else if (lead >= 0xF1u && lead <= 0xF3u) {
        info = {4, lead & 0x07u, 0x80u, 0xBFu};
    } else if (lead == 0xF4u) {
        info = {4, lead & 0x07u, 0x80u, 0x8Fu};
    } else {
        return false;
    }
    return true;
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    std::size_t index = 0;
    while (index < utf8.size()) {
        const auto lead = static_cast<unsigned char>(utf8[index]);
        if (lead < 0x80u) {
            out.push_back(lead);
            ++index;
            continue;
        }
        LeadByte info{};
        if (!Classify(lead, info)) {
            out.push_back(kReplacement);
            ++index;
            continue;
        }
        // One U+FFFD for the longest prefix that could still have become a valid sequence.
        std::uint32_t codePoint = info.bits;
        std::size_t taken = 1;
        for (; taken < info.length && index + taken < utf8.size(); ++taken) {
            const auto byte = static_cast<unsigned char>(utf8[index + taken]);
            const bool fits = taken == 1 ? (byte >= info.secondLow && byte <= info.secondHigh)
                                         : IsContinuation(byte);
            if (!fits) {
                break;
            }
            codePoint = (codePoint << 6) | (byte & 0x3Fu);
        }
        if (taken == info.length) {
            AppendCodePoint(out, codePoint);
        } else {
            out.push_back(kReplacement);
        }
        index += taken;
    }
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
