// The sheet that asks for the password that a server or a proxy requires.
#include "platform/gtk/web/AnswerWait.h"

#include "foundation/StringWithFormat.h"
#include "texts/Texts.h"

#include <sigc++/functors/mem_fun.h>
#include <sigc++/functors/slot.h>

#include <memory>

namespace vok {

namespace {

bool asksForPassword(WebKitAuthenticationRequest* request) {
    switch (webkit_authentication_request_get_scheme(request)) {
    case WEBKIT_AUTHENTICATION_SCHEME_DEFAULT:
    case WEBKIT_AUTHENTICATION_SCHEME_HTTP_BASIC:
    case WEBKIT_AUTHENTICATION_SCHEME_HTTP_DIGEST:
    case WEBKIT_AUTHENTICATION_SCHEME_NTLM:
    case WEBKIT_AUTHENTICATION_SCHEME_NEGOTIATE:
        return true;
    default:
        return false;
    }
}

std::string message(WebKitAuthenticationRequest* request) {
    const auto question = StringWithFormat(webkit_authentication_request_is_for_proxy(request)
                                               ? translated(texts::proxySignIn)
                                               : translated(texts::serverSignIn),
                                           webkit_authentication_request_get_host(request));
    return webkit_authentication_request_is_retry(request) ? translated(texts::signInFailed) + "\n" + question
                                                           : question;
}

}  // namespace

std::optional<Alert> AnswerWait::signIn(WebKitAuthenticationRequest* request) {
    if (!asksForPassword(request))
        return std::nullopt;
    if (timer.connected()) {
        timer.disconnect();
        openRequest.reset(WEBKIT_AUTHENTICATION_REQUEST(g_object_ref(request)));
    }
    const auto typed = std::make_shared<SignInFields>();
    const std::shared_ptr<WebKitAuthenticationRequest> kept(
        WEBKIT_AUTHENTICATION_REQUEST(g_object_ref(request)), g_object_unref);
    // If the sheet outlives this object, the slot does nothing.
    const sigc::slot<void(bool, WebKitAuthenticationRequest*)> onEnd =
        sigc::mem_fun(*this, &AnswerWait::onSignInEnd);
    const auto end = [kept, typed, onEnd](bool agreed) {
        if (agreed) {
            g_autoptr(WebKitCredential) credential = webkit_credential_new(
                typed->userName.c_str(), typed->password.c_str(), WEBKIT_CREDENTIAL_PERSISTENCE_FOR_SESSION);
            webkit_authentication_request_authenticate(kept.get(), credential);
        } else {
            webkit_authentication_request_cancel(kept.get());
        }
        onEnd(agreed, kept.get());
    };
    Alert alert{AlertStyle::informational, translated(texts::signInTitle), translated(texts::signIn),
                message(request),          translated(texts::cancel),      end};
    alert.signIn = typed;
    return alert;
}

void AnswerWait::onSignInEnd(bool agreed, WebKitAuthenticationRequest* request) {
    if (openRequest.get() != request)
        return;
    if (agreed) {
        start();
    } else {
        end();
        onSignInCancelled();
    }
}

}  // namespace vok
