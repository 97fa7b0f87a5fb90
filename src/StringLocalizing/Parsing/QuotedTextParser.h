#pragma once

#include <boost/spirit/home/qi/parser.hpp>
#include <boost/spirit/home/qi/skip_over.hpp>
#include <boost/spirit/home/support/handles_container.hpp>
#include <boost/spirit/home/support/info.hpp>
#include <boost/spirit/home/support/unused.hpp>

#include <cstddef>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>

namespace LocalizationManager::StringLocalizing::Parsing {

// A Qi primitive for the text between the apostrophes of a quoted string, escapes replaced.
// It stops before the first apostrophe that is not escaped, or at the end of input, and always
// succeeds: requiring the closing apostrophe is left to the grammar, so that a missing one is
// reported as the literal it is. Backslash-n gives a line feed, two backslashes one backslash
// and backslash-apostrophe an apostrophe; any other backslash is an ordinary character.
//
// The text is measured first and then built in one piece, so it has no spare capacity: it is
// stored in the dictionary as it is. Its attribute is std::u16string, which it replaces.
struct QuotedTextParser : boost::spirit::qi::primitive_parser<QuotedTextParser> {
    template <typename Context, typename Iterator>
    struct attribute {
        using type = std::u16string;
    };

    template <typename Iterator, typename Context, typename Skipper, typename Attribute>
    bool parse(Iterator& first, const Iterator& last, Context& /*context*/, const Skipper& skipper,
               Attribute& text) const {
        boost::spirit::qi::skip_over(first, last, skipper);
        std::size_t escapes = 0;
        Iterator end = first;
        while (end != last && *end != u'\'') {
            if (*end == u'\\') {
                ++end;
                if (end != last && IsEscaped(*end)) {
                    ++escapes;
                    ++end;
                }
            } else {
                ++end;
            }
        }
        if constexpr (!std::is_same_v<std::remove_const_t<Attribute>, boost::spirit::unused_type>) {
            text = escapes == 0 ? std::u16string(first, end) : Unescape(first, end, escapes);
        }
        first = end;
        return true;
    }

    template <typename Context>
    boost::spirit::info what(Context& /*context*/) const {
        return boost::spirit::info("quoted text");
    }

  private:
    // The units a backslash escapes.
    static bool IsEscaped(char16_t unit) { return unit == u'n' || unit == u'\\' || unit == u'\''; }

    // [first, end) holds `escapes` escape sequences, as measured by parse().
    template <typename Iterator>
    static std::u16string Unescape(Iterator first, const Iterator& end, std::size_t escapes) {
        std::u16string text(static_cast<std::size_t>(std::distance(first, end)) - escapes, u'\0');
        auto out = text.begin();
        while (first != end) {
            char16_t unit = *first;
            ++first;
            // An escaped unit is always inside the range: parse() takes it with its backslash.
            if (unit == u'\\' && first != end && IsEscaped(*first)) {
                unit = *first == u'n' ? u'\n' : static_cast<char16_t>(*first);
                ++first;
            }
            *out = unit;
            ++out;
        }
        return text;
    }
};

}  // namespace LocalizationManager::StringLocalizing::Parsing

namespace boost::spirit::traits {

// In a sequence whose attribute is a string (the quoted string rule), Qi would otherwise hand
// the parser one unit at a time to append; it fills the whole string at once instead.
template <typename Attribute, typename Context, typename Iterator>
struct handles_container<LocalizationManager::StringLocalizing::Parsing::QuotedTextParser,
                         Attribute, Context, Iterator> : mpl::true_ {};

}  // namespace boost::spirit::traits
