#include "RuleSamples.h"

#include <cstddef>
#include <limits>
#include <unordered_set>

namespace locmgr::analysis {

namespace {

constexpr std::int64_t kSmallNumbers = 1100;  // beyond the hundreds every table rule cycles in
constexpr std::int64_t kSmallNegatives = 120;
// Each number tried costs an evaluation of the whole rule, which grows with the constants the
// file names; trying numbers around every constant made the check quadratic in the file's
// size (a rule of 10,000 comparisons took seconds, one of 100,000 minutes). Past this many
// distinct constants the rest add no numbers, so the cost stays linear. Real rule files name a
// few dozen at most.
constexpr std::size_t kMaxConstants = 256;

class NumberList {
  public:
    void Add(std::int64_t number) {
        if (seen_.insert(number).second) {
            numbers_.push_back(number);
        }
    }
    // Adds `number` and its neighbours, where they stay inside the 64-bit range.
    void AddAround(std::int64_t number) {
        if (number > std::numeric_limits<std::int64_t>::min()) {
            Add(number - 1);
        }
        Add(number);
        if (number < std::numeric_limits<std::int64_t>::max()) {
            Add(number + 1);
        }
    }
    std::vector<std::int64_t> Take() { return std::move(numbers_); }

  private:
    std::vector<std::int64_t> numbers_;
    std::unordered_set<std::int64_t> seen_;
};

// The decimal numbers written in a rule text, as unsigned values of at most 64 bits.
std::vector<std::uint64_t> NumbersIn(const std::u16string& text) {
    std::vector<std::uint64_t> numbers;
    std::size_t position = 0;
    while (position < text.size()) {
        if (text[position] < u'0' || text[position] > u'9') {
            ++position;
            continue;
        }
        std::uint64_t number = 0;
        bool overflow = false;
        for (; position < text.size() && text[position] >= u'0' && text[position] <= u'9';
             ++position) {
            overflow = overflow || number > std::numeric_limits<std::uint64_t>::max() / 10 - 1;
            number = number * 10 + static_cast<std::uint64_t>(text[position] - u'0');
        }
        if (!overflow) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

}  // namespace

std::vector<std::int64_t> SampleNumbers(const std::u16string& ruleText) {
    NumberList list;
    for (std::int64_t number = 0; number < kSmallNumbers; ++number) {
        list.Add(number);
    }
    for (std::int64_t number = -1; number >= -kSmallNegatives; --number) {
        list.Add(number);
    }
    std::unordered_set<std::uint64_t> constants;
    for (const std::uint64_t written : NumbersIn(ruleText)) {
        if (written > std::numeric_limits<std::uint32_t>::max()) {
            continue;  // the parser refuses it anyway
        }
        if (!constants.insert(written).second) {
            continue;  // its numbers are in already
        }
        if (constants.size() > kMaxConstants) {
            break;
        }
        const auto asWritten = static_cast<std::int64_t>(written);
        // The runtime keeps constants as 32-bit values: 4294967295 compares as -1.
        const auto stored = static_cast<std::int64_t>(static_cast<std::int32_t>(written));
        for (const std::int64_t constant : {asWritten, stored}) {
            list.AddAround(constant);
            list.AddAround(-constant);
            // Remainders repeat with the modulus: the next periods and a large multiple.
            list.AddAround(2 * constant);
            list.AddAround(10 * constant);
            list.AddAround(constant * 1000003);
        }
    }
    for (int exponent = 1; exponent < 63; ++exponent) {
        const std::int64_t power = std::int64_t{1} << exponent;
        list.AddAround(power);
        list.AddAround(-power);
    }
    std::int64_t power = 10;
    for (int exponent = 2; exponent <= 18; ++exponent) {
        power *= 10;
        list.AddAround(power);
        list.AddAround(-power);
    }
    list.Add(std::numeric_limits<std::int64_t>::max());
    list.Add(std::numeric_limits<std::int64_t>::min());
    list.AddAround(std::numeric_limits<std::int32_t>::max());
    list.AddAround(std::numeric_limits<std::int32_t>::min());
    return list.Take();
}

std::size_t FormOfNumber(
    const LocalizationManager::StringLocalizing::Model::PluralRuleEntries& entries,
    std::int64_t number) {
    std::size_t form = 0;
    while (form < entries.size() && !(entries[form] && entries[form](number))) {
        ++form;
    }
    return form;
}

FormSamples ClassifyNumbers(
    const LocalizationManager::StringLocalizing::Model::PluralRuleEntries& entries,
    const std::vector<std::int64_t>& numbers, std::size_t perForm) {
    FormSamples samples;
    samples.numbersOfForm.resize(entries.size());
    for (const std::int64_t number : numbers) {
        const std::size_t form = FormOfNumber(entries, number);
        std::vector<std::int64_t>& kept =
            form < entries.size() ? samples.numbersOfForm[form] : samples.withoutForm;
        if (kept.size() < perForm) {
            kept.push_back(number);
        }
    }
    return samples;
}

}  // namespace locmgr::analysis
