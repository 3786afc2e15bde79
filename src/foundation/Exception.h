#pragma once

#include "foundation/StringWithFormat.h"

#include <exception>
#include <string>
#include <utility>

namespace vok {

enum class ExceptionKind {
    NSInvalidArgumentException,  ///< a missing (nil) or unusable argument
    NSGenericException,          ///< everything else
};

/// An error of the installer: a kind, and a message that may be shown to the user unchanged.
/// Start-up and commands catch this class and nothing else.
class Exception : public std::exception {
public:
    Exception(ExceptionKind kind, std::string message) : kind_(kind), message_(std::move(message)) {}

    ExceptionKind kind() const noexcept { return kind_; }
    const std::string& message() const noexcept { return message_; }
    const char* what() const noexcept override { return message_.c_str(); }

private:
    ExceptionKind kind_;
    std::string message_;
};

/// Throws an Exception whose message is `format` filled by StringWithFormat.
template <class... Arguments>
[[noreturn]] void raise(ExceptionKind kind, std::string_view format, const Arguments&... arguments) {
    throw Exception(kind, StringWithFormat(format, arguments...));
}

}  // namespace vok
