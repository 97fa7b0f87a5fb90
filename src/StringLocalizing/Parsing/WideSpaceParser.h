#pragma once

#include <boost/spirit/home/qi/parser.hpp>
#include <boost/spirit/home/qi/skip_over.hpp>
#include <boost/spirit/home/support/info.hpp>
#include <boost/spirit/home/support/unused.hpp>

#include <array>
#include <cwctype>

namespace LocalizationManager::StringLocalizing::Parsing {

// A Qi primitive for one whitespace unit, as the runtime's wide-character classification
// (iswspace, the test of Qi's standard_wide::space) sees it; the localization file grammar uses
// it as its skipper. The answers for ASCII are asked of iswspace when the object is made and
// kept in a table, so that the common case costs no call; any other unit is asked each time.
// Make one per parse: a locale installed between parses is then followed, as iswspace itself
// follows it.
class WideSpaceParser : public boost::spirit::qi::primitive_parser<WideSpaceParser> {
  public:
    template <typename Context, typename Iterator>
    struct attribute {
        using type = boost::spirit::unused_type;
    };

    WideSpaceParser() {
        for (unsigned unit = 0; unit < asciiSpace_.size(); ++unit) {
            asciiSpace_[unit] = std::iswspace(static_cast<std::wint_t>(unit)) != 0;
        }
    }

    template <typename Iterator, typename Context, typename Skipper, typename Attribute>
    bool parse(Iterator& first, const Iterator& last, Context& /*context*/, const Skipper& skipper,
               Attribute& /*attribute*/) const {
        boost::spirit::qi::skip_over(first, last, skipper);
        if (first != last && IsSpace(*first)) {
            ++first;
            return true;
        }
        return false;
    }

    template <typename Context>
    boost::spirit::info what(Context& /*context*/) const {
        return boost::spirit::info("space");
    }

    bool IsSpace(char16_t unit) const {
        return unit < asciiSpace_.size() ? asciiSpace_[unit]
                                         : std::iswspace(static_cast<std::wint_t>(unit)) != 0;
    }

  private:
    std::array<bool, 128> asciiSpace_{};
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
