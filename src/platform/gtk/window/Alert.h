#pragma once

#include "platform/Window.h"

#include <functional>
#include <memory>
#include <string>

namespace vok {

/// What a sheet asks the user to type.
struct SignInFields {
    std::string userName;
    std::string password;
};

/// The content of one sheet.
struct Alert {
    AlertStyle style;
    std::string title;
    std::string agreeButton;
    std::string message;
    std::string cancelButton = {};                ///< none when empty
    std::function<void(bool agreed)> onEnd = {};  ///< agreed: by `agreeButton`
    std::shared_ptr<SignInFields> signIn = {};    ///< filled in before `onEnd`; no fields when null
    bool isDestructive = false;  ///< agreeing may lose data, so the default button is `cancelButton`
};

}  // namespace vok
