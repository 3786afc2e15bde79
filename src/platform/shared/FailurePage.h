#pragma once

#include <string>

namespace vok {

/// The HTML page shown in place of one that could not be loaded, failure-page.html: names the address and the
/// reason, and offers to try again, by a link to the same address and by the usual keys for a reload. Both
/// strings are plain text.
std::string failurePage(const std::string& url, const std::string& reason);

}  // namespace vok
