#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vok {

/// `text` escaped for use in a URL: A-Z a-z 0-9 and - _ . ! ~ * ' ( ) ; / ? : @ & = + $ , stay; every other
/// byte, "%" included, becomes "%" and two upper-case hexadecimal digits.
std::string AddPercentEscapes(std::string_view text);

/// `text` with each "%" and two hexadecimal digits turned into their byte; "+" stays a plus sign.
/// Nothing when an escape is malformed or the result is not UTF-8.
std::optional<std::string> RemovePercentEscapes(std::string_view text);

}  // namespace vok
