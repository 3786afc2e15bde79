#pragma once

#include <string>

namespace vok {

/// The desktop that the application runs on.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Opens `url` in the person's default browser and returns at once; a failure is logged, not reported.
    virtual void openURL(const std::string& url) = 0;
};

}  // namespace vok
