#pragma once

#include "platform/Workspace.h"

#include <map>

namespace vok {

/// The desktop's URI handlers, and its browsers by their desktop entries.
class UriHandlerWorkspace final : public Workspace {
public:
    void openURL(const std::string& url) override;
    /// Asks the program of the desktop entry with --version, for 2 seconds at most.
    std::optional<std::string> browserVersion(const std::string& type) override;
    void openFirefox() override;

private:
    std::map<std::string, std::optional<std::string>>
        browserVersions;  ///< by type, as far as they were asked for
};

}  // namespace vok
