// How the web view reloads its page.
#include "platform/gtk/web/WebKitView.h"

#include "platform/gtk/web/PageDialogs.h"

#include <sigc++/adaptors/bind.h>
#include <sigc++/functors/mem_fun.h>
#include <sigc++/functors/slot.h>

#include <utility>

namespace vok {

bool WebKitView::canReload() const {
    if (!requestedURL.empty())
        return false;
    if (failedLoad)
        return failedLoad->canTryAgain;
    const auto present = mainFrameURL();
    return present && !isStartURL(*present) &&
           (!policyDelegate->webViewIsCommandURL(*present) || isDeveloperMode());
}

void WebKitView::reload() {
    if (!canReload())
        return;
    if (failedLoad) {
        loadRequest(failedLoad->url);
    } else if (const auto present = *mainFrameURL(); policyDelegate->webViewIsCommandURL(present)) {
        askToRunAgain(present);
    } else {
        reloadRequested = true;
        webkit_web_view_reload(view.get());
    }
}

void WebKitView::askToRunAgain(const std::string& commandURL) {
    if (std::exchange(askedCommandURL, commandURL) == commandURL)
        return;
    // If the sheet outlives this object, the slot does nothing.
    const sigc::slot<void(bool)> onEnd =
        sigc::bind(sigc::mem_fun(*this, &WebKitView::onRunAgainAnswer), commandURL);
    showSheet(runAgainQuestion(view.get(), onEnd));
}

/// If the page is gone, the answer does nothing.
void WebKitView::onRunAgainAnswer(bool agreed, const std::string& commandURL) {
    const bool pageIsGone =
        std::exchange(askedCommandURL, {}) != commandURL || mainFrameURL() != commandURL || !canReload();
    if (agreed && !pageIsGone)
        loadRequest(commandURL);
}

}  // namespace vok
