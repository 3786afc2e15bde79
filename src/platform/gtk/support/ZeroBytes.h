#pragma once

#include <Poco/String.h>

#include <string>

namespace vok {

inline bool hasZeroByte(const std::string& text) { return text.find('\0') != std::string::npos; }

/// `text` for one who takes a zero byte for its end: U+FFFD stands in for each.
inline std::string withoutZeroBytes(const std::string& text) {
    return Poco::replace(text, std::string(1, '\0'), std::string("\uFFFD"));
}

}  // namespace vok
