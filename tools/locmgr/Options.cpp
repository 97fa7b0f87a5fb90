#include "Options.h"

#include "ClosestName.h"
#include "OptionTable.h"

#include <boost/program_options/errors.hpp>
#include <boost/program_options/parsers.hpp>
#include <boost/program_options/positional_options.hpp>
#include <boost/program_options/variables_map.hpp>

namespace locmgr {

namespace po = boost::program_options;

namespace {

const OptionDefinition* FindSpec(const std::vector<OptionDefinition>& definitions,
                                 const std::string& name) {
    for (const OptionDefinition& definition : definitions) {
        if (definition.name == name) {
            return &definition;
        }
    }
    return nullptr;
}

// Boost refuses "--alt=" outright, but an empty value has always been a value (a script's
// `--alt="$ALT"` with ALT unset means no alternative directory), so it becomes the separate
// empty token Boost accepts. Flags keep their "=" and are refused as before.
std::vector<std::string> SplitEmptyValues(const std::vector<std::string>& arguments,
                                          const std::vector<OptionDefinition>& definitions) {
    std::vector<std::string> split;
    bool optionsEnded = false;
    for (const std::string& argument : arguments) {
        optionsEnded = optionsEnded || argument == "--";
        const bool emptyValue = !optionsEnded && argument.size() > 3 &&
                                argument.compare(0, 2, "--") == 0 && argument.back() == '=';
        const OptionDefinition* definition =
            emptyValue ? FindSpec(definitions, argument.substr(0, argument.size() - 1)) : nullptr;
        if (definition != nullptr && !definition->IsFlag()) {
            split.push_back(definition->name);
            split.emplace_back();
        } else {
            split.push_back(argument);
        }
    }
    return split;
}

UsageError UnknownOption(const std::string& token,
                         const std::vector<OptionDefinition>& definitions) {
    const std::string name = token.substr(0, token.find('='));
    std::vector<std::string> known{"--help"};
    for (const OptionDefinition& definition : definitions) {
        known.push_back(definition.name);
    }
    std::string message = "unknown option '" + name + "'";
    const std::string closest = ClosestName(name, known);
    if (!closest.empty()) {
        message += "; did you mean '" + closest + "'?";
    }
    return UsageError(message);
}

// Boost's messages reworded as locmgr has always put them.
UsageError SyntaxError(const po::invalid_command_line_syntax& error) {
    const std::string name = error.get_option_name();
    switch (error.kind()) {
        case po::invalid_command_line_syntax::missing_parameter:
            return UsageError("option '" + name + "' needs a value");
        case po::invalid_command_line_syntax::extra_parameter:
            return UsageError("option '" + name + "' takes no value");
        default:
            return UsageError(error.what());
    }
}

po::variables_map ParseWithBoost(const std::vector<std::string>& arguments,
                                 const std::vector<OptionDefinition>& definitions) {
    po::positional_options_description positional;
    positional.add(kOperandsKey, -1);
    // Without guessing, "--ro" is a mistake to point out, not a silent "--root".
    const int style =
        po::command_line_style::default_style & ~po::command_line_style::allow_guessing;
    // The parsed options point into the description, which must outlive them.
    const po::options_description description = ParsedOptions(definitions);
    po::variables_map parsed;
    try {
        const po::parsed_options options =
            po::command_line_parser(SplitEmptyValues(arguments, definitions))
                .options(description)
                .positional(positional)
                .style(style)
                .run();
        // The operands' hidden option is an option to Boost; typed by name, it is unknown.
        for (const po::option& option : options.options) {
            if (option.string_key == kOperandsKey && option.position_key == -1) {
                throw UnknownOption(option.original_tokens.front(), definitions);
            }
        }
        po::store(options, parsed);
    } catch (const po::unknown_option& error) {
        throw UnknownOption(error.get_option_name(), definitions);
    } catch (const po::invalid_command_line_syntax& error) {
        throw SyntaxError(error);
    } catch (const po::error& error) {
        throw UsageError(error.what());
    }
    return parsed;
}

}  // namespace

Options Options::Parse(const std::vector<std::string>& arguments,
                       const std::vector<OptionDefinition>& definitions) {
    const po::variables_map parsed = ParseWithBoost(arguments, definitions);
    Options options;
    options.helpRequested_ = parsed.count("help") != 0;
    if (parsed.count(kOperandsKey) != 0) {
        options.operands_ = parsed[kOperandsKey].as<std::vector<std::string>>();
    }
    for (const OptionDefinition& definition : definitions) {
        options.defaults_[definition.name] = definition.defaultValue;
        const std::string key = BoostKey(definition.name);
        if (parsed.count(key) != 0) {
            options.given_[definition.name] = parsed[key].as<std::vector<std::string>>();
        }
    }
    if (!options.helpRequested_) {
        for (const OptionDefinition& definition : definitions) {
            if (definition.required) {
                options.Required(definition.name, definition.valueName);
            }
        }
    }
    return options;
}

std::string Options::Value(const std::string& name) const {
    const auto found = given_.find(name);
    if (found != given_.end() && !found->second.empty()) {
        return found->second.back();
    }
    const auto fallback = defaults_.find(name);
    return fallback != defaults_.end() ? fallback->second : "";
}

std::string Options::Required(const std::string& name, const std::string& placeholder) const {
    const auto found = given_.find(name);
    if (found == given_.end() || found->second.empty() || found->second.back().empty()) {
        throw UsageError("missing " + name + " " + placeholder);
    }
    return found->second.back();
}

const std::vector<std::string>& Options::Values(const std::string& name) const {
    static const std::vector<std::string> kNone;
    const auto found = given_.find(name);
    return found != given_.end() ? found->second : kNone;
}

}  // namespace locmgr
