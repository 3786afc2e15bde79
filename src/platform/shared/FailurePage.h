#pragma once

#include <string>

namespace vok {

/// The HTML page that stands in for one that could not be loaded: names the address and the reason, and
/// offers to try again, by a link to the same address and by the usual keys for a reload. Both texts are
/// shown as they stand.
std::string failurePage(const std::string& url, const std::string& reason);

/// The reason for an answer that is a file of a type that the web view cannot show.
std::string unsupportedTypeReason(const std::string& mimeType);

}  // namespace vok
