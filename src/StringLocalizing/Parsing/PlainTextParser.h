#pragma once

#include <boost/spirit/home/qi/parser.hpp>
#include <boost/spirit/home/support/info.hpp>
#include <boost/spirit/home/support/unused.hpp>

namespace LocalizationManager::StringLocalizing::Parsing {

// A Qi primitive for the text between the apostrophes of a quoted string that holds no
// backslash, which is then its text as it stands: it stops before the first apostrophe or at
// the end of input, and fails at a backslash, leaving texts with escapes to QuotedTextParser.
// It has no attribute: the grammar takes the text's units where the parsed text holds them.
struct PlainTextParser : boost::spirit::qi::primitive_parser<PlainTextParser> {
    template <typename Context, typename Iterator>
    struct attribute {
        using type = boost::spirit::unused_type;
    };

    template <typename Iterator, typename Context, typename Skipper, typename Attribute>
    bool parse(Iterator& first, const Iterator& last, Context& /*context*/,
               const Skipper& /*skipper*/, Attribute& /*attribute*/) const {
        Iterator end = first;
        while (end != last && *end != u'\'') {
            if (*end == u'\\') {
                return false;
            }
            ++end;
        }
        first = end;
        return true;
    }

    template <typename Context>
    boost::spirit::info what(Context& /*context*/) const {
        return boost::spirit::info("plain text");
    }
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
