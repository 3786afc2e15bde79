#pragma once

#include <optional>
#include <string>

namespace vok {

/// The desktop that the application runs on.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Opens `url` in the user's default browser and returns at once; a failure is logged, not reported.
    virtual void openURL(const std::string& url) = 0;

    /// Version of a browser that is not at its macOS path; `type` is "chrome", "firefox" or "safari". Nothing
    /// when it is not installed or prints no version. May block for a few seconds at the first call for a
    /// type; later calls return the same.
    virtual std::optional<std::string> browserVersion(const std::string& /*type*/) { return std::nullopt; }

    /// Starts a Firefox that is not at its macOS path, and returns at once; a failure is only logged.
    virtual void openFirefox() {}
};

}  // namespace vok
