#include "OptionTable.h"

#include <boost/program_options/value_semantic.hpp>

namespace locmgr {

namespace po = boost::program_options;

namespace {

// Help lines wrap where a terminal of the usual width (and help2man) expects.
constexpr unsigned kLineLength = 80;

// Every option collects a list of strings, even a flag: a repeated flag or option is then no
// error, the last value wins where one counts, and the commands convert values themselves so
// that their messages stay their own. Defaults are Options' business, not Boost's, so that
// a default given on the command line still counts as given.
po::typed_value<std::vector<std::string>>* SemanticOf(const OptionDefinition& definition) {
    auto* semantic = po::value<std::vector<std::string>>();
    return definition.IsFlag() ? semantic->zero_tokens()
                               : semantic->value_name(definition.valueName);
}

std::string DescriptionOf(const OptionDefinition& definition) {
    std::string description = definition.description;
    if (!definition.defaultValue.empty()) {
        description += " (default: " + definition.defaultValue + ")";
    }
    return definition.repeatable ? description + " (repeatable)" : description;
}

}  // namespace

std::string BoostKey(const std::string& name) {
    return name.substr(name.find_first_not_of('-'));
}

po::options_description VisibleOptions(const std::vector<OptionDefinition>& definitions) {
    po::options_description options("Options", kLineLength, kLineLength / 2);
    for (const OptionDefinition& definition : definitions) {
        options.add_options()(BoostKey(definition.name).c_str(), SemanticOf(definition),
                              DescriptionOf(definition).c_str());
    }
    options.add_options()("help,h", po::value<std::vector<std::string>>()->zero_tokens(),
                          "show this help and exit");
    return options;
}

po::options_description ParsedOptions(const std::vector<OptionDefinition>& definitions) {
    po::options_description options = VisibleOptions(definitions);
    options.add_options()(kOperandsKey, po::value<std::vector<std::string>>());
    return options;
}

}  // namespace locmgr
