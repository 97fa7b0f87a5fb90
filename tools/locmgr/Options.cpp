#include "Options.h"

namespace locmgr {

Options Options::Parse(const std::vector<std::string>& arguments,
                       const std::vector<OptionSpec>& specs) {
    Options options;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string& argument = arguments[index];
        if (argument == "--") {
            options.operands_.insert(options.operands_.end(), arguments.begin() + index + 1,
                                     arguments.end());
            break;
        }
        if (argument == "--help" || argument == "-h") {
            options.helpRequested_ = true;
            continue;
        }
        // A lone "-" is an operand, as it is for most tools.
        if (argument.size() < 2 || argument[0] != '-') {
            options.operands_.push_back(argument);
            continue;
        }
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const OptionSpec* spec = nullptr;
        for (const OptionSpec& candidate : specs) {
            if (candidate.name == name) {
                spec = &candidate;
            }
        }
        if (spec == nullptr) {
            throw UsageError("unknown option '" + name + "'");
        }
        std::vector<std::string>& values = options.values_[name];
        if (!spec->takesValue) {
            if (equals != std::string::npos) {
                throw UsageError("option '" + name + "' takes no value");
            }
            values.emplace_back();
        } else if (equals != std::string::npos) {
            values.push_back(argument.substr(equals + 1));
        } else if (index + 1 < arguments.size()) {
            values.push_back(arguments[++index]);
        } else {
            throw UsageError("option '" + name + "' needs a value");
        }
    }
    return options;
}

std::string Options::Value(const std::string& name, const std::string& fallback) const {
    const auto found = values_.find(name);
    return found != values_.end() ? found->second.back() : fallback;
}

std::string Options::Required(const std::string& name, const std::string& placeholder) const {
    const std::string value = Value(name);
    if (value.empty()) {
        throw UsageError("missing " + name + " " + placeholder);
    }
    return value;
}

const std::vector<std::string>& Options::Values(const std::string& name) const {
    static const std::vector<std::string> kNone;
    const auto found = values_.find(name);
    return found != values_.end() ? found->second : kNone;
}

}  // namespace locmgr
