#include "BatchRequest.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>

namespace locmgr {

namespace {

using nlohmann::json;

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// Reads a request in one pass over its events. nlohmann's parser hands a number's text as
// written only to a SAX handler (number_float), and the request is flat enough that the handler
// can collect its fields itself instead of building a document first.
class RequestReader final : public json::json_sax_t {
  public:
    // The request, or std::invalid_argument with the first thing wrong with it, in the order
    // scope, culture, key, params, then the parameters by name.
    BatchRequest Take() {
        if (!jsonError_.empty()) {
            throw std::invalid_argument(jsonError_);
        }
        if (!isObject_) {
            throw std::invalid_argument("a request must be a JSON object");
        }
        BatchRequest request{
            Required(scope_, "scope"), Required(culture_, "culture"), Required(key_, "key"), {}};
        if (params_ == Params::kInvalid) {
            throw std::invalid_argument("\"params\" must be an object");
        }
        for (auto& [name, text] : paramTexts_) {
            if (!text) {
                throw std::invalid_argument("parameter \"" + name +
                                            "\" must be a string or a number");
            }
            request.params.emplace_back(name, std::move(*text));
        }
        return request;
    }

    bool null() override { return Value(Kind::kNull); }
    bool boolean(bool /*value*/) override { return Value(Kind::kOther); }
    bool number_integer(number_integer_t value) override {
        return Value(Kind::kNumber, std::to_string(value));
    }
    bool number_unsigned(number_unsigned_t value) override {
        return Value(Kind::kNumber, std::to_string(value));
    }
    bool number_float(number_float_t /*value*/, const string_t& written) override {
        return Value(Kind::kNumber, ParameterTextOfNumber(written));
    }
    bool string(string_t& value) override { return Value(Kind::kString, std::move(value)); }
    bool binary(binary_t& /*value*/) override { return Value(Kind::kOther); }
    bool start_object(std::size_t /*elements*/) override {
        Value(Kind::kObject);
        ++depth_;
        return true;
    }
    bool end_object() override {
        --depth_;
        return true;
    }
    bool start_array(std::size_t /*elements*/) override {
        Value(Kind::kOther);
        ++depth_;
        return true;
    }
    bool end_array() override {
        --depth_;
        return true;
    }
    bool key(string_t& name) override {
        if (depth_ == 1) {
            member_ = name == "scope"     ? Member::kScope
                      : name == "culture" ? Member::kCulture
                      : name == "key"     ? Member::kKey
                      : name == "params"  ? Member::kParams
                                          : Member::kOther;
        } else if (depth_ == 2 && member_ == Member::kParams) {
            paramName_ = name;
        }
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*lastToken*/,
                     const json::exception& error) override {
        jsonError_ = error.what();
        return false;
    }

  private:
    enum class Kind { kNull, kString, kNumber, kObject, kOther };
    enum class Member { kOther, kScope, kCulture, kKey, kParams };
    enum class Params { kAbsent, kObject, kInvalid };

    static std::string Required(std::optional<std::string>& field, const char* name) {
        if (!field) {
            throw std::invalid_argument(std::string("\"") + name + "\" must be a string");
        }
        return std::move(*field);
    }

    // A value at the current depth; a later member of the same name replaces an earlier one.
    bool Value(Kind kind, std::string text = {}) {
        std::optional<std::string> asText;
        if (kind == Kind::kString) {
            asText = std::move(text);
        }
        if (depth_ == 0) {
            isObject_ = kind == Kind::kObject;
        } else if (depth_ == 1) {
            switch (member_) {
                case Member::kScope:
                    scope_ = std::move(asText);
                    break;
                case Member::kCulture:
                    culture_ = std::move(asText);
                    break;
                case Member::kKey:
                    key_ = std::move(asText);
                    break;
                case Member::kParams:
                    params_ = kind == Kind::kObject ? Params::kObject
                              : kind == Kind::kNull ? Params::kAbsent
                                                    : Params::kInvalid;
                    paramTexts_.clear();
                    break;
                case Member::kOther:
                    break;
            }
        } else if (depth_ == 2 && member_ == Member::kParams && params_ == Params::kObject) {
            if (kind == Kind::kNumber) {
                asText = std::move(text);
            }
            paramTexts_[paramName_] = std::move(asText);
        }
        return true;
    }

    int depth_ = 0;
    Member member_ = Member::kOther;
    std::string jsonError_;
    bool isObject_ = false;
    std::optional<std::string> scope_;
    std::optional<std::string> culture_;
    std::optional<std::string> key_;
    Params params_ = Params::kAbsent;
    std::string paramName_;
    // nullopt for a value that is neither a string nor a number.
    std::map<std::string, std::optional<std::string>> paramTexts_;
};

}  // namespace

BatchRequest ParseBatchRequest(const std::string& line) {
    RequestReader reader;
    json::sax_parse(line, &reader);
    return reader.Take();
}

std::string ParameterTextOfNumber(const std::string& written) {
    // Far beyond any exponent that could still give at most kMaxIntegerDigits digits, and far
    // from overflowing when the fraction's length is taken off.
    constexpr std::int64_t kExponentCap = 1'000'000'000;

    std::size_t position = 0;
    const bool negative = !written.empty() && written[0] == '-';
    position += negative ? 1 : 0;
    // The value is digits * 10^(exponent - fractionDigits).
    std::string digits;
    for (; position < written.size() && IsDigit(written[position]); ++position) {
        digits.push_back(written[position]);
    }
    std::int64_t fractionDigits = 0;
    if (position < written.size() && written[position] == '.') {
        for (++position; position < written.size() && IsDigit(written[position]); ++position) {
            digits.push_back(written[position]);
            ++fractionDigits;
        }
    }
    std::int64_t exponent = 0;
    if (position < written.size() && (written[position] == 'e' || written[position] == 'E')) {
        ++position;
        bool negativeExponent = false;
        if (position < written.size() && (written[position] == '+' || written[position] == '-')) {
            negativeExponent = written[position] == '-';
            ++position;
        }
        for (; position < written.size() && IsDigit(written[position]); ++position) {
            exponent = std::min(exponent * 10 + (written[position] - '0'), kExponentCap);
        }
        exponent = negativeExponent ? -exponent : exponent;
    }
    if (position != written.size() || digits.empty()) {
        return written;  // not a JSON number; the parser never hands over such a text
    }

    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    if (digits.empty()) {
        return "0";
    }
    const std::size_t significant = digits.find_last_not_of('0') + 1;
    const std::int64_t scale =
        exponent - fractionDigits + static_cast<std::int64_t>(digits.size() - significant);
    digits.resize(significant);
    if (scale < 0 || static_cast<std::int64_t>(digits.size()) + scale >
                         static_cast<std::int64_t>(kMaxIntegerDigits)) {
        return written;
    }
    return (negative ? "-" : "") + digits + std::string(static_cast<std::size_t>(scale), '0');
}

}  // namespace locmgr
