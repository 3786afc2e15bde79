#pragma once

#include <map>
#include <string>

namespace vok {

/// Texts by name. A property list's values that are not strings are held as their text.
using Dictionary = std::map<std::string, std::string>;

/// The parameters of one command URL, percent-decoded. Lent to the command that it names, kept by nobody.
using CommandParams = Dictionary;

}  // namespace vok
