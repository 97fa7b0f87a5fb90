#pragma once

// The Boost.Program_options description of a command's options, which both the parser and
// the generated help use, so that what is accepted and what is shown cannot differ.

#include "OptionDefinition.h"

#include <boost/program_options/options_description.hpp>

#include <string>
#include <vector>

namespace locmgr {

// The key under which the parser collects the operands; no option can be called so.
constexpr char kOperandsKey[] = "operands";

// The options of `definitions` plus -h/--help, as the help shows them.
boost::program_options::options_description VisibleOptions(
    const std::vector<OptionDefinition>& definitions);

// The visible options plus the hidden one that takes the operands.
boost::program_options::options_description ParsedOptions(
    const std::vector<OptionDefinition>& definitions);

// "--root" -> "root", the name Boost knows an option by.
std::string BoostKey(const std::string& name);

}  // namespace locmgr
