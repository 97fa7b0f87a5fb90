#pragma once

#include <boost/spirit/home/qi/parser.hpp>
#include <boost/spirit/home/qi/skip_over.hpp>
#include <boost/spirit/home/support/info.hpp>
#include <boost/spirit/home/support/unused.hpp>

#include <string>
#include <type_traits>

namespace LocalizationManager::StringLocalizing::Parsing {

// A Qi primitive for a key as written: an ASCII letter or "_", then any number of ASCII letters,
// digits and "_". Qi's wide character sets would look each unit up by binary search over their
// ranges and append it to the attribute; this tests units directly and builds the key in one
// piece. Its attribute is std::u16string, which it replaces. Nothing is skipped inside a key.
struct KeyParser : boost::spirit::qi::primitive_parser<KeyParser> {
    template <typename Context, typename Iterator>
    struct attribute {
        using type = std::u16string;
    };

    template <typename Iterator, typename Context, typename Skipper, typename Attribute>
    bool parse(Iterator& first, const Iterator& last, Context& /*context*/, const Skipper& skipper,
               Attribute& key) const {
        boost::spirit::qi::skip_over(first, last, skipper);
        if (first == last || !IsKeyStart(*first)) {
            return false;
        }
        Iterator end = first;
        ++end;
        while (end != last && IsKeyContinuation(*end)) {
            ++end;
        }
        if constexpr (!std::is_same_v<std::remove_const_t<Attribute>, boost::spirit::unused_type>) {
            key = std::u16string(first, end);
        }
        first = end;
        return true;
    }

    template <typename Context>
    boost::spirit::info what(Context& /*context*/) const {
        return boost::spirit::info("key");
    }

  private:
    static bool IsLetterOrUnderscore(char16_t unit) {
        return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
    }
    static bool IsKeyStart(char16_t unit) { return IsLetterOrUnderscore(unit); }
    static bool IsKeyContinuation(char16_t unit) {
        return IsLetterOrUnderscore(unit) || (unit >= u'0' && unit <= u'9');
    }
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
