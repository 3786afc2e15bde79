#pragma once

#include <Poco/String.h>

#include <string>

namespace vok {

inline bool hasZeroByte(const std::string& text) { return text.find('\0') != std::string::npos; }

/// `text` with each zero byte replaced by U+FFFD, for interfaces with zero-terminated strings.
inline std::string withoutZeroBytes(const std::string& text) {
    return Poco::replace(text, std::string(1, '\0'), std::string("\uFFFD"));
}

}  // namespace vok
