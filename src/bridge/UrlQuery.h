#pragma once

#include "foundation/Dictionary.h"

#include <optional>
#include <string>

namespace vok {

/// Parses a command URL's query into parameters:
///
///     query = piece *( "&" piece )      a piece that is empty or begins with "=" is skipped
///     piece = key [ "=" value ]         a missing value is empty; a second "=" and the rest are dropped
///
/// Key and value are percent-decoded after splitting; "+" stays a plus sign. The last value of a repeated
/// key wins. For example "command=install&flag&name=a%20b+c=d&command=cancel" gives {command:
/// "cancel", flag: "", name: "a b+c"}.
///
/// Raises NSInvalidArgumentException when `query` is nil or a key or value does not decode to UTF-8 text.
CommandParams UrlQueryToDictionary(const std::optional<std::string>& query);

}  // namespace vok
