#pragma once

#include "foundation/Dictionary.h"

#include <optional>
#include <string>

namespace vok {

/// Reads property lists, binary and XML. XML is UTF-8, or UTF-16 with a byte order mark.
class PropertyListReader {
public:
    virtual ~PropertyListReader() = default;

    /// The top-level dictionary of the file at `path`; nothing when the file is missing, unreadable or not
    /// a property list, its top level is not a dictionary, or a string in it is not valid Unicode. Values
    /// that are not strings are converted: 1 and 0 for booleans, decimal digits for numbers.
    virtual std::optional<Dictionary> dictionaryWithContentsOfFile(const std::string& path) const = 0;
};

}  // namespace vok
