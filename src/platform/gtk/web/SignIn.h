#pragma once

#include "platform/gtk/window/Alert.h"

#include <webkit/webkit.h>

#include <functional>
#include <optional>

namespace vok {

/// The sheet that asks for the user name and the password that a server or a proxy requires; nothing if
/// `request` asks for something else, such as a client certificate. What the user types is kept in memory,
/// for this session. `onEnd` is called after the request has been answered.
std::optional<Alert> signInAlert(WebKitAuthenticationRequest* request,
                                 std::function<void(bool agreed)> onEnd);

}  // namespace vok
