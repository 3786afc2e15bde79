#pragma once

#include "platform/Bundle.h"
#include "platform/PropertyListReader.h"
#include "platform/URLParser.h"

#include <map>
#include <optional>
#include <string>

namespace vok::test {

/// What the linked backend answers without a window, and where its answers rightly differ from the other
/// backend's.
struct Backend {
    const Bundle& bundle;
    const PropertyListReader& propertyLists;
    const URLParser& urls;

    /// Answers of `urls` that differ from the table of the tests, by the name of the row.
    std::map<std::string, std::optional<URL>> differentURLs;
    /// 29 February 2024, 12:00 UTC, as a property list's date is shown.
    std::string date;
    /// A part of what a dictionary with the key "inner" is shown as.
    std::string innerKey;
};

/// Each backend has a source file of its own that defines this.
const Backend& backend();

}  // namespace vok::test
