#pragma once

// The framework's exceptions. Each carries where it was raised, a 32-bit value for the
// framework's own use, a wide message and an optional inner exception that it owns. The
// message is reached through GetDescription(); what() is not the message.

#include "ulo/ResultCode.h"
#include "ulo/String.h"

#include <cstdint>
#include <exception>
#include <utility>

namespace ulo {

// Base of the framework exceptions. Copying deep-copies the inner exception, which is
// destroyed with its owner. Virtual operations in slot order: destructor, what() (the standard
// one), GetDescription(), Throw(), Clone().
class Exception : public std::exception {
  public:
    using Message = types::basic_string_t<char16_t>;

    // `sourceFile` must live as long as the exception: a literal or __FILE__. This module
    // passes 0 as `value`.
    Exception(const char* sourceFile, std::int32_t line, std::int32_t value, Message message)
        : sourceFile_(sourceFile), line_(line), value_(value), message_(std::move(message)) {}

    // Takes a copy of `inner` (made by its Clone(), so it keeps its dynamic type).
    Exception(const char* sourceFile, std::int32_t line, std::int32_t value, Message message,
              const Exception& inner)
        : Exception(sourceFile, line, value, std::move(message)) {
        innerException_ = inner.Clone();
    }

    Exception(const Exception& other)
        : std::exception(other),
          sourceFile_(other.sourceFile_),
          line_(other.line_),
          value_(other.value_),
          message_(other.message_),
          innerException_(other.innerException_ != nullptr ? other.innerException_->Clone()
                                                           : nullptr) {}

    Exception(Exception&& other) noexcept
        : std::exception(other),
          sourceFile_(other.sourceFile_),
          line_(other.line_),
          value_(other.value_),
          message_(std::move(other.message_)),
          innerException_(std::exchange(other.innerException_, nullptr)) {}

    // Assignment would slice a derived exception; exceptions are copied whole or cloned.
    Exception& operator=(const Exception&) = delete;
    Exception& operator=(Exception&&) = delete;

    ~Exception() override { delete innerException_; }

    // A copy of the message.
    virtual Message GetDescription() const { return message_; }

    // Throws a copy of this exception with its dynamic type.
    [[noreturn]] virtual void Throw() const = 0;

    // A heap copy of this exception with its dynamic type; the caller owns it.
    virtual Exception* Clone() const = 0;

    const char* SourceFile() const noexcept { return sourceFile_; }
    std::int32_t Line() const noexcept { return line_; }
    std::int32_t Value() const noexcept { return value_; }

    // Null when there is none; owned by this exception.
    const Exception* InnerException() const noexcept { return innerException_; }

  private:
    const char* sourceFile_;
    std::int32_t line_;
    std::int32_t value_;
    Message message_;
    Exception* innerException_ = nullptr;
};

// Supplies Throw() and Clone() for Derived, which must be copy-constructible.
template <class Derived, class Base>
class ExceptionBase : public Base {
  public:
    using Base::Base;

    [[noreturn]] void Throw() const override { throw static_cast<const Derived&>(*this); }

    Exception* Clone() const override { return new Derived(static_cast<const Derived&>(*this)); }
};

// A failure of the framework's own calls (service lookups and the like).
class RuntimeError : public ExceptionBase<RuntimeError, Exception> {
  public:
    using ExceptionBase::ExceptionBase;

    // The class name, not the message: handlers that log what() write "RuntimeError", and the
    // message is reached only through GetDescription(). Deliberate; keep it.
    const char* what() const noexcept override { return "RuntimeError"; }
};

// A failure that is to be returned as a result code as it stands: an object factory returns
// Code() when creation throws this. The message is the code's text.
class ResultCodeException : public ExceptionBase<ResultCodeException, Exception> {
  public:
    ResultCodeException(const char* sourceFile, std::int32_t line, std::int32_t code)
        : ExceptionBase(sourceFile, line, 0, Message(ResultCodeText(code))), code_(code) {}

    std::int32_t Code() const noexcept { return code_; }

    const char* what() const noexcept override { return "ResultCodeException"; }

  private:
    std::int32_t code_;
};

}  // namespace ulo
