#pragma once

#include "platform/Bundle.h"
#include "platform/PropertyListReader.h"
#include "platform/URLParser.h"

#include <map>
#include <optional>
#include <string>

namespace vok::test {

/// The parts of the linked backend that need no window, and its permitted differences from the other backend.
struct Backend {
    const Bundle& bundle;
    const PropertyListReader& propertyLists;
    const URLParser& urls;

    /// Results of `urls` that differ from the tests' table, by the name of the row.
    std::map<std::string, std::optional<URL>> differentURLs;
    /// The string for 29 February 2024, 12:00 UTC, in a property list.
    std::string date;
    /// A part of the string for a dictionary with the key "inner".
    std::string innerKey;
};

/// Defined in one source file for each backend.
const Backend& backend();

}  // namespace vok::test
