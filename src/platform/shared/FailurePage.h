#pragma once

#include <string>

namespace vok {

struct FailedLoad {
    std::string url;
    std::string reason;
    bool canTryAgain = true;         ///< offers `url` again
    std::string startAgainURL = {};  ///< what "Start again" leads to; the page offers it unless this is empty
};

/// The HTML page that takes the place of one that could not be loaded: names the address and the reason, and
/// offers to go on by links.
std::string failurePage(const FailedLoad& load);

/// The reason for an answer that is a file of a type that the web view cannot show.
std::string unsupportedTypeReason(const std::string& mimeType);

}  // namespace vok
