#pragma once

#include "platform/Workspace.h"

#include <map>

namespace vok {

/// Uses the desktop's URI handlers, and finds browsers by their desktop entries.
class UriHandlerWorkspace final : public Workspace {
public:
    void openURL(const std::string& url) override;
    /// Runs the desktop entry's program with --version, for 2 seconds at most.
    std::optional<std::string> browserVersion(const std::string& type) override;
    void openFirefox() override;

private:
    std::map<std::string, std::optional<std::string>> browserVersions;  ///< by type; filled on demand
};

}  // namespace vok
