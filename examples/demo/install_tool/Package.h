#pragma once

#include <string>
#include <string_view>

inline constexpr std::string_view productName = "Demo Agent";

/// A downloaded package: its first line is "Demo Agent <version>", its last "End of package".
struct Package {
    std::string version;  ///< digits and dots, at most 31 characters
    std::string content;  ///< the whole package, as it is written to disk
};

/// Raises std::runtime_error with a message for the user when the content is not a complete package of this
/// product.
Package readPackage(std::string content);

/// The configuration template with {{agentId}}, {{version}} and {{targetDir}} filled in.
std::string fillTemplate(std::string text, const std::string& agentId, const std::string& version,
                         const std::string& targetDir);

/// Whether the dotted version `left` is lower than `right`; compared by number, so 1.9 is lower than 1.10.
bool isOlder(const std::string& left, const std::string& right);
