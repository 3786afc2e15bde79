#pragma once

#include "platform/gtk/support/Signal.h"
#include "platform/gtk/window/Alert.h"

#include <sigc++/connection.h>
#include <sigc++/trackable.h>
#include <webkit/webkit.h>

#include <functional>
#include <optional>

namespace vok {

/// The wait of a load for its server's answer: at most a minute, which WebKitGTK does not limit, but as long
/// as the user needs to sign in.
class AnswerWait : public sigc::trackable {
public:
    /// `onSilence` is called when no answer came within a minute of `start`, and `onSignInCancelled` when the
    /// user does not sign in.
    AnswerWait(std::function<void()> onSilence, std::function<void()> onSignInCancelled);
    ~AnswerWait();
    AnswerWait(const AnswerWait&) = delete;
    AnswerWait& operator=(const AnswerWait&) = delete;

    /// Begins to wait, or begins anew.
    void start();
    void end();

    /// The sheet for `request`; nothing if it does not ask for a password. The minute begins anew after it.
    std::optional<Alert> signIn(WebKitAuthenticationRequest* request);

private:
    void onSignInEnd(bool agreed, WebKitAuthenticationRequest* request);

    std::function<void()> onSilence;
    std::function<void()> onSignInCancelled;
    sigc::connection timer;
    GObjectPtr<WebKitAuthenticationRequest> openRequest;  ///< that of the load, not of a part of its page
};

}  // namespace vok
