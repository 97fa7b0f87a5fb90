#pragma once

// One request line of `locmgr batch`, read from its JSON text.

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace locmgr {

struct BatchRequest {
    std::string scope;
    std::string culture;
    std::string key;
    // By name, each name once (the last value written wins), in name order.
    std::vector<std::pair<std::string, std::string>> params;
};

// Reads `line`: a JSON object with the strings "scope", "culture" and "key" and an optional
// "params" object (or null) whose values are strings or numbers; other members are ignored,
// and of a member written twice the last counts. A parameter's string reaches the resolver as
// it is; a number as ParameterTextOfNumber makes it of the number as written. Throws
// std::invalid_argument with the reason for a line that is not such a request (the JSON
// parser's own message for one that is not JSON).
BatchRequest ParseBatchRequest(const std::string& line);

constexpr std::size_t kMaxIntegerDigits = 100;

// The text a JSON number `written` (as the request wrote it, valid JSON number syntax) gives
// the resolver: the plain decimal integer when its value is a whole number ("1e3", "1.0",
// "1000" and "10.00e2" give "1000"; "-0.0" gives "0"), otherwise exactly the text written
// ("2.5", "1.5e-3"). The value is taken from the text, never from a binary floating-point
// number, so no digit is lost or made up. A whole number of more than kMaxIntegerDigits
// digits (such as "1e150") keeps its written text too: no resolver reads such a number, and
// writing it out would let a short request take any amount of memory. (A number beyond the
// range of a double, such as 1e400, never gets here: the JSON parser refuses the request.)
std::string ParameterTextOfNumber(const std::string& written);

}  // namespace locmgr
