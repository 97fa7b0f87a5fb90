#pragma once

#include <string>

namespace locmgr {

// One option of a command, declared once: the parser, the generated help and the synopsis
// all read it. Built with Valued or Flag and refined by copy:
//   Valued("--format", "FORMAT", "text or json").Default("text")
struct OptionDefinition {
    std::string name;          // as typed: "--root"
    std::string valueName;     // "DIR"; empty for a flag, which takes no value
    std::string description;   // one phrase for the help
    std::string defaultValue;  // what Options::Value gives when the option is absent
    // Every value counts (Options::Values); otherwise the last one given wins.
    bool repeatable = false;
    // Absent or empty is a usage error.
    bool required = false;

    bool IsFlag() const { return valueName.empty(); }

    OptionDefinition Default(std::string value) const {
        OptionDefinition copy = *this;
        copy.defaultValue = std::move(value);
        return copy;
    }
    OptionDefinition Repeatable() const {
        OptionDefinition copy = *this;
        copy.repeatable = true;
        return copy;
    }
    OptionDefinition Required() const {
        OptionDefinition copy = *this;
        copy.required = true;
        return copy;
    }
    OptionDefinition Optional() const {
        OptionDefinition copy = *this;
        copy.required = false;
        return copy;
    }
    // The same option described for one command's use of it.
    OptionDefinition Describe(std::string text) const {
        OptionDefinition copy = *this;
        copy.description = std::move(text);
        return copy;
    }
};

inline OptionDefinition Valued(std::string name, std::string valueName, std::string description) {
    return OptionDefinition{
        std::move(name), std::move(valueName), std::move(description), "", false, false};
}

inline OptionDefinition Flag(std::string name, std::string description) {
    return OptionDefinition{std::move(name), "", std::move(description), "", false, false};
}

}  // namespace locmgr
