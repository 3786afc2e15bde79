#pragma once

#include <string>
#include <string_view>

namespace vok {

/// `text` escaped for use in a URL: A-Z a-z 0-9 and - _ . ! ~ * ' ( ) ; / ? : @ & = + $ , are kept; every
/// other byte, "%" included, becomes "%" and two upper-case hexadecimal digits.
std::string AddPercentEscapes(std::string_view text);

/// Decodes each "%" and two hexadecimal digits in `text`; "+" stays a plus sign. Returns false when an
/// escape is malformed or the result is not UTF-8; `text` is then unspecified.
bool RemovePercentEscapes(std::string& text);

}  // namespace vok
