#pragma once

#include "platform/Window.h"

#include <functional>
#include <string>

namespace vok {

/// What one sheet says.
struct Alert {
    AlertStyle style;
    std::string title;
    std::string defaultButton;
    std::string message;
    std::string cancelButton = {};                ///< none when empty
    std::function<void(bool agreed)> onEnd = {};  ///< agreed: by the default button
};

}  // namespace vok
