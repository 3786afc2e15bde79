#include "app/AppDelegate.h"

#include "config/ConfigurationKeys.h"
#include "config/DictionaryLookup.h"
#include "foundation/Log.h"
#include "pages/PageHosts.h"
#include "platform/URLParser.h"
#include "platform/Workspace.h"
#include "texts/Texts.h"

#include <utility>

namespace vok {

/// A web content process that crashes this many times, each within this time of the crash before, is not
/// started again: the page may crash it every time.
constexpr int crashLimit = 3;
constexpr std::chrono::minutes crashInterval{1};

void AppDelegate::webViewDidFinishLoadForFrame(WebView&, WebFrame& frame) {
    if (&frame != &webView->mainFrame())
        return;
    const auto frameUrl = frame.webView().mainFrameURL().value_or("");
    Log("frameUrl = %@", frameUrl);

    if (frameUrl.starts_with(getSplashPageUrl())) {
        Log("Navigated to splash page. Begin navigating to installation page...");
        navigateTo(getFirstInstallationPageUrl());
        return;
    }
    if (frameUrl.starts_with(GetStringFromDict(config(), configuration::commandUrlPrefix))) {
        const auto url = platform.urls.URLWithString(frameUrl);
        executeUrlQuery(url ? url->query : std::nullopt);
    }
}

void AppDelegate::navigateTo(const std::string& url) { webView->mainFrame().loadRequest(url); }

void AppDelegate::ensureNavigatedTo(const std::string& url) {
    const auto current = webView->mainFrameURL();
    const auto parsed = platform.urls.URLWithString(url);
    const auto& target = parsed ? parsed->absoluteString : url;
    if (current && *current != target)
        navigateTo(target);
}

void AppDelegate::webViewDecidePolicyForNavigationAction(WebView&, const std::string& requestURL,
                                                         WebPolicyDecisionListener& listener) {
    if (std::exchange(openUrlInNewWindow, false)) {
        platform.workspace.openURL(requestURL);
        listener.ignore();
    } else {
        listener.use();
    }
}

bool AppDelegate::webViewIsCommandURL(const std::string& url) const {
    const auto prefix = appConfig ? FindStringInDict(config(), "commandUrlPrefix") : std::nullopt;
    return prefix && url.starts_with(*prefix);
}

bool AppDelegate::webViewMayShowPage(const std::string& url) const {
    return !pageHosts || IsOnPageHost(url, *pageHosts);
}

WebView& AppDelegate::webViewCreateWebViewWithRequest(WebView& sender, const std::string&) {
    openUrlInNewWindow = true;
    return sender;
}

void AppDelegate::webViewWebContentProcessDidTerminate(WebView&) {
    openUrlInNewWindow = false;  // the page's pending navigation is gone
    const auto now = std::chrono::steady_clock::now();
    crashCount = now - std::exchange(lastCrash, now) < crashInterval ? crashCount + 1 : 1;
    if (crashCount >= crashLimit) {
        Log("The web content process has ended again. Giving up.");
        showErrorMessage(translated(texts::pageCrashed));
        return;
    }
    Log("The web content process has ended. Going back to the splash page...");
    navigateTo(getSplashPageUrl());
}

}  // namespace vok
