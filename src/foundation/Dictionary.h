#pragma once

#include <map>
#include <string>

namespace vok {

/// Strings by name. Values of a property list that are not strings are converted to strings.
using Dictionary = std::map<std::string, std::string>;

/// The parameters of one command URL, percent-decoded. Borrowed for the call.
using CommandParams = Dictionary;

}  // namespace vok
