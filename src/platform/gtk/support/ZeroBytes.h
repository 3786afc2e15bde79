#pragma once

#include <Poco/String.h>

#include <string>

namespace vok {

inline bool hasZeroByte(const std::string& text) { return text.find('\0') != std::string::npos; }

/// `text` for an interface that ends strings at a zero byte: each becomes U+FFFD.
inline std::string withoutZeroBytes(const std::string& text) {
    return Poco::replace(text, std::string(1, '\0'), std::string("\uFFFD"));
}

}  // namespace vok
