#pragma once

// Contract checks and the exceptions they throw. A violated contract is reported with the
// checked text (an argument name or a call expression), the full signature of the function
// that checked it, the source file and the line; that text reaches the tracer verbatim.
//
// Macros (all prefixed ULO_; usable only inside a function, since they name
// __PRETTY_FUNCTION__):
//   ULO_CODE_CONTRACTS_LOCATION(text)        location of the stringised `text`, here.
//   ULO_CODE_CONTRACTS_LOCATION_AT(checkedText, file, line)
//                                            location with a literal checked text, file text
//                                            and line, in the current function.
//   ULO_REQUIRE_NOT_NULL(p)                  RequireNotNull(p, location of `p` here).
//   ULO_REQUIRE_NOT_NULL_AT(p, file, line)   the same, reporting the given file text and line.
//   ULO_INVARIANT_NOT_NULL(p)                InvariantNotNull(p, location of `p` here).
//   ULO_INVARIANT_NOT_NULL_AT(p, file, line)
//   ULO_CHECK_CALL(expr, message)            evaluates `expr` once and passes its result code
//                                            to LocalizationManager::CheckCall with the
//                                            expression's text as the checked text.
//   ULO_CHECK_CALL_AT(expr, message, file, line)
// The _AT forms exist for checks whose messages must name a fixed source file and line,
// whatever file and line they stand at in our sources.

#include "ulo/rtl/ResultCodeMessage.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace code_contracts {

// Where a contract is checked. Holds pointers only, so that building one costs nothing when the
// check passes: every text must outlive the location (literals, __PRETTY_FUNCTION__, __FILE__).
class SourceLocation {
  public:
    constexpr SourceLocation(const char* checkedText, const char* functionSignature,
                             const char* sourceFile, std::int32_t line) noexcept
        : checkedText_(checkedText),
          functionSignature_(functionSignature),
          sourceFile_(sourceFile),
          line_(line) {}

    constexpr const char* CheckedText() const noexcept { return checkedText_; }
    constexpr const char* FunctionSignature() const noexcept { return functionSignature_; }
    constexpr const char* SourceFile() const noexcept { return sourceFile_; }
    constexpr std::int32_t Line() const noexcept { return line_; }

  private:
    const char* checkedText_;
    const char* functionSignature_;
    const char* sourceFile_;
    std::int32_t line_;
};

// Base of the contract exceptions. what() is
//   "Contract Violation! Violated argument '<checked>' at <signature> at <file>:<line>"
//   "Description: <description>"
// as one line.
class ContractViolationException : public std::runtime_error {
  public:
    ContractViolationException(const SourceLocation& location, const std::string& description)
        : std::runtime_error(FormatMessage(location, description)),
          location_(location),
          description_(description) {}

    const SourceLocation& Location() const noexcept { return location_; }
    const std::string& Description() const noexcept { return description_; }

  private:
    static std::string FormatMessage(const SourceLocation& location,
                                     const std::string& description) {
        // "Violated argument" also when the checked text is a call expression, and nothing
        // between the line number and "Description: ": both are the established text that
        // readers of the logs match on. Keep them.
        return std::string("Contract Violation! ") + "Violated argument '" +
               location.CheckedText() + "' at " + location.FunctionSignature() + " at " +
               location.SourceFile() + ":" + std::to_string(location.Line()) +
               "Description: " + description;
    }

    SourceLocation location_;
    std::string description_;
};

// A violated precondition.
class RequireViolationException : public ContractViolationException {
  public:
    using ContractViolationException::ContractViolationException;
};

// A violated invariant.
class InvariantViolationException : public ContractViolationException {
  public:
    using ContractViolationException::ContractViolationException;
};

// A null pointer where one was required; Base is RequireViolationException or
// InvariantViolationException. Description: "unexpected null pointer".
template <class Base>
class NullPointerException : public Base {
  public:
    explicit NullPointerException(const SourceLocation& location)
        : Base(location, "unexpected null pointer") {}
};

// Returns `pointer` (a raw or smart pointer) when it is not null, else throws
// NullPointerException<RequireViolationException>. The result refers to the argument, so it
// is to be used within the full expression when the argument is a temporary.
template <class Pointer>
const Pointer& RequireNotNull(const Pointer& pointer, const SourceLocation& location) {
    if (!pointer) {
        throw NullPointerException<RequireViolationException>(location);
    }
    return pointer;
}

// As RequireNotNull, throwing NullPointerException<InvariantViolationException>.
template <class Pointer>
const Pointer& InvariantNotNull(const Pointer& pointer, const SourceLocation& location) {
    if (!pointer) {
        throw NullPointerException<InvariantViolationException>(location);
    }
    return pointer;
}

}  // namespace code_contracts

namespace LocalizationManager {

// A framework or platform call returned a failure code.
class UloCallFailedException : public code_contracts::ContractViolationException {
  public:
    using ContractViolationException::ContractViolationException;
};

// Does nothing when `code` is a success (0 and positive codes such as 1, "False", included);
// otherwise throws UloCallFailedException described as `message` + ", error: " + the code's
// text.
inline void CheckCall(std::int32_t code, const code_contracts::SourceLocation& location,
                      const std::string& message) {
    if (code >= 0) {
        return;
    }
    throw UloCallFailedException(location, message + ", error: " + ulo::ResultCodeMessage(code));
}

}  // namespace LocalizationManager

// Every checked text is stringised in the macro that the caller invokes, so that it is the
// argument as written, not its macro expansion.
#define ULO_CODE_CONTRACTS_LOCATION_AT(checkedText, file, line) \
    ::code_contracts::SourceLocation((checkedText), __PRETTY_FUNCTION__, (file), (line))

#define ULO_CODE_CONTRACTS_LOCATION(text) ULO_CODE_CONTRACTS_LOCATION_AT(#text, __FILE__, __LINE__)

#define ULO_REQUIRE_NOT_NULL(p) \
    ::code_contracts::RequireNotNull((p), ULO_CODE_CONTRACTS_LOCATION_AT(#p, __FILE__, __LINE__))

#define ULO_REQUIRE_NOT_NULL_AT(p, file, line) \
    ::code_contracts::RequireNotNull((p), ULO_CODE_CONTRACTS_LOCATION_AT(#p, file, line))

#define ULO_INVARIANT_NOT_NULL(p) \
    ::code_contracts::InvariantNotNull((p), ULO_CODE_CONTRACTS_LOCATION_AT(#p, __FILE__, __LINE__))

#define ULO_INVARIANT_NOT_NULL_AT(p, file, line) \
    ::code_contracts::InvariantNotNull((p), ULO_CODE_CONTRACTS_LOCATION_AT(#p, file, line))

#define ULO_CHECK_CALL(expr, message) \
    ::LocalizationManager::CheckCall( \
        (expr), ULO_CODE_CONTRACTS_LOCATION_AT(#expr, __FILE__, __LINE__), (message))

#define ULO_CHECK_CALL_AT(expr, message, file, line)                                            \
    ::LocalizationManager::CheckCall((expr), ULO_CODE_CONTRACTS_LOCATION_AT(#expr, file, line), \
                                     (message))
