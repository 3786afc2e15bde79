#pragma once

#include "platform/gtk/support/Signal.h"
#include "platform/gtk/window/Alert.h"

#include <sigc++/connection.h>
#include <sigc++/trackable.h>
#include <webkit/webkit.h>

#include <functional>
#include <optional>

namespace vok {

/// Limits the time that a load waits for its server's answer to a minute, since WebKitGTK has no limit. The
/// time in which the user signs in does not count.
class AnswerWait : public sigc::trackable {
public:
    /// `onTimeout` is called when there is no answer within a minute of `start`, and `onSignInCancelled` when
    /// the user does not sign in.
    AnswerWait(std::function<void()> onTimeout, std::function<void()> onSignInCancelled);
    ~AnswerWait();

    /// Starts or restarts the wait.
    void start();
    void end();

    /// The sheet that asks for the user name and the password that a server or a proxy requires; nothing if
    /// `request` asks for something else, such as a client certificate. What the user types is kept in
    /// memory, for this session. The wait restarts after the sheet.
    std::optional<Alert> signIn(WebKitAuthenticationRequest* request);

private:
    void onSignInEnd(bool agreed, WebKitAuthenticationRequest* request);

    std::function<void()> onTimeout;
    std::function<void()> onSignInCancelled;
    sigc::connection timer;
    /// Of the load itself, not of a resource of its page.
    GObjectPtr<WebKitAuthenticationRequest> openRequest;
};

}  // namespace vok
