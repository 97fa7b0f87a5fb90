#pragma once

#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace ulo {

// A runtime error whose message may hold NUL characters: keys, scope names, file names and the
// quoted line of a file can, and an error line must show them whole. what() is a C string and
// ends at the first NUL; Message() is the whole text.
class MessageError : public std::runtime_error {
  public:
    explicit MessageError(std::string message)
        : std::runtime_error(message), message_(std::move(message)) {}

    const std::string& Message() const noexcept { return message_; }

  private:
    std::string message_;
};

// The whole message of `error`: Message() of a MessageError, what() of anything else.
inline std::string_view FullMessage(const std::exception& error) noexcept {
    if (const auto* messageError = dynamic_cast<const MessageError*>(&error)) {
        return messageError->Message();
    }
    const char* message = error.what();
    return message != nullptr ? std::string_view(message) : std::string_view("(null)");
}

}  // namespace ulo
