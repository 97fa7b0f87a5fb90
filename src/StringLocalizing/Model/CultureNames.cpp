#include "StringLocalizing/Model/CultureNames.h"

#include "StringLocalizing/Model/LanguageName.h"
#include "ulo/ResultCode.h"

#include <locale>
#include <map>

namespace LocalizationManager::StringLocalizing::Model {

using localization_manager::Culture;

namespace {

Culture MakeEntry(std::uint32_t languageId, const char* firstSubtag = "") {
    Culture culture;
    culture.languageId = languageId;
    culture.firstSubtag = firstSubtag;
    return culture;
}

// Lower-case culture names to cultures. Grouped names stand for a language with a region
// ("anz" is English in Australia); the table is scanned in key order, not in this order.
const std::map<std::string, Culture>& CultureNameTable() {
    static const std::map<std::string, Culture> table{
        {"ar", MakeEntry(0)},        {"bg", MakeEntry(1)},      {"br", MakeEntry(24, "br")},
        {"cs", MakeEntry(4)},        {"da", MakeEntry(5)},      {"de", MakeEntry(12)},
        {"el", MakeEntry(13)},       {"en", MakeEntry(7)},      {"anz", MakeEntry(7, "au")},
        {"es", MakeEntry(28)},       {"et", MakeEntry(8)},      {"fa", MakeEntry(9)},
        {"fi", MakeEntry(10)},       {"fr", MakeEntry(11)},     {"ga", MakeEntry(16)},
        {"hch", MakeEntry(2, "hk")}, {"hu", MakeEntry(14)},     {"id", MakeEntry(15)},
        {"it", MakeEntry(17)},       {"ja", MakeEntry(18)},     {"kk", MakeEntry(19)},
        {"ko", MakeEntry(20)},       {"lt", MakeEntry(21)},     {"lv", MakeEntry(22)},
        {"la", MakeEntry(28, "mx")}, {"nl", MakeEntry(6)},      {"nb", MakeEntry(23)},
        {"pl", MakeEntry(25)},       {"pt", MakeEntry(24)},     {"ru", MakeEntry(26)},
        {"ro", MakeEntry(27)},       {"sch", MakeEntry(3)},     {"sr-cyrl", MakeEntry(29)},
        {"sr-latn", MakeEntry(30)},  {"zh-hans", MakeEntry(3)}, {"zh-hant", MakeEntry(2)},
        {"sea", MakeEntry(7, "my")}, {"sl", MakeEntry(31)},     {"sv", MakeEntry(32)},
        {"tch", MakeEntry(2)},       {"tr", MakeEntry(33)},     {"vi", MakeEntry(34)},
    };
    return table;
}

ulo::types::basic_string_t<char> Subtag(const std::string& text) {
    return ulo::types::basic_string_t<char>(text);
}

std::string LowerCase(const std::string& name) {
    const std::locale locale;
    const auto& facet = std::use_facet<std::ctype<char>>(locale);
    std::string lowered(name);
    for (char& character : lowered) {
        character = facet.tolower(character);
    }
    return lowered;
}

}  // namespace

std::int32_t ConvertCultureName(const std::string& name, Culture& culture) {
    const std::string lowered = LowerCase(name);
    for (const auto& [key, entry] : CultureNameTable()) {
        if (lowered.compare(0, key.size(), key) != 0) {
            continue;
        }
        // The subtags keep the case in which the host wrote them.
        const std::string rest = name.substr(key.size());
        if (rest.empty()) {
            culture = entry;
            return ulo::kResultOk;
        }
        // "english" must not pass for "en".
        if (rest.front() != '-') {
            return ulo::kResultUnspecifiedError;
        }
        culture = entry;
        const std::size_t secondDash = rest.find('-', 1);
        if (secondDash == std::string::npos) {
            culture.firstSubtag = Subtag(rest.substr(1));
        } else {
            culture.firstSubtag = Subtag(rest.substr(1, secondDash - 1));
            culture.secondSubtag = Subtag(rest.substr(secondDash + 1));
        }
        return ulo::kResultOk;
    }
    return ulo::kResultUnspecifiedError;
}

std::string SubtagsText(const Culture& culture) {
    std::string text = "-";
    text += culture.firstSubtag.ToStdString();
    if (!culture.secondSubtag.empty()) {
        text += '-';
        text += culture.secondSubtag.ToStdString();
    }
    return text;
}

std::string CultureText(const Culture& culture) {
    return LanguageName(culture.languageId) + SubtagsText(culture);
}

}  // namespace LocalizationManager::StringLocalizing::Model
