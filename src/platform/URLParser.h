#pragma once

#include <optional>
#include <string>

namespace vok {

/// A parsed URL.
struct URL {
    std::string absoluteString;        ///< normalised as the web view does
    std::optional<std::string> query;  ///< between "?" and "#", still percent-encoded; nothing without a "?"
};

class URLParser {
public:
    virtual ~URLParser() = default;

    /// Nothing when `text` is neither a URL nor a relative reference.
    virtual std::optional<URL> URLWithString(const std::string& text) const = 0;
};

}  // namespace vok
