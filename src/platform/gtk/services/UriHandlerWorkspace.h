#pragma once

#include "platform/Workspace.h"

namespace vok {

/// The desktop's URI handlers.
class UriHandlerWorkspace final : public Workspace {
public:
    void openURL(const std::string& url) override;
};

}  // namespace vok
