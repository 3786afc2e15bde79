#pragma once

#include "foundation/Dictionary.h"

#include <optional>
#include <string>

namespace vok {

class PropertyListReader;

/// The value under `key`; raises NSInvalidArgumentException when `dict` or `key` is null and
/// NSGenericException when there is no value.
std::string GetStringFromDict(const Dictionary* dict, const char* key);

/// The value under `key`, or nothing; raises NSInvalidArgumentException when `dict` or `key` is null.
std::optional<std::string> FindStringInDict(const Dictionary* dict, const char* key);

/// The value under `key` in the property list file at `plistPath`; nothing when the file or the value is
/// missing. Raises NSInvalidArgumentException when `plistPath` or `key` is null.
std::optional<std::string> FindValueInPlistFile(const PropertyListReader& propertyLists,
                                                const char* plistPath, const char* key);

}  // namespace vok
