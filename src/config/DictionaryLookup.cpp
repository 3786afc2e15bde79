#include "config/DictionaryLookup.h"

#include "foundation/Exception.h"
#include "platform/PropertyListReader.h"

namespace vok {

using enum ExceptionKind;

std::string GetStringFromDict(const Dictionary* dict, const char* key) {
    const auto value = FindStringInDict(dict, key);
    if (!value)
        raise(NSGenericException, "Failed to get '%@' string from dictionary (string is not found).", key);
    return *value;
}

std::optional<std::string> FindStringInDict(const Dictionary* dict, const char* key) {
    if (!dict || !key)
        raise(NSInvalidArgumentException, "GetStringFromDict: Invalid argument.");
    const auto entry = dict->find(key);
    if (entry == dict->end())
        return std::nullopt;
    return entry->second;
}

std::optional<std::string> FindValueInPlistFile(const PropertyListReader& propertyLists,
                                                const char* plistPath, const char* key) {
    if (!plistPath || !key)
        raise(NSInvalidArgumentException, "FindValueFromPlistFile: Invalid argument.");
    const auto dictionary = propertyLists.dictionaryWithContentsOfFile(plistPath);
    return dictionary ? FindStringInDict(&*dictionary, key) : std::nullopt;
}

}  // namespace vok
