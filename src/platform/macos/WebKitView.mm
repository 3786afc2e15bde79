#include "platform/macos/WebKitView.h"

#include "foundation/Log.h"
#include "platform/Workspace.h"
#include "platform/macos/Bridging.h"
#include "platform/macos/CocoaCalls.h"
#include "platform/macos/WebViewDelegate.h"
#include "platform/shared/ErrorPage.h"
#include "platform/shared/OtherPrograms.h"

#include <functional>

namespace vok {

namespace {

VOKWebViewDelegate* delegateOf(EngineView* view) {
    return static_cast<VOKWebViewDelegate*>(view.policyDelegate);
}

/// The policy delegate of the port, null before it is set.
const WebPolicyDelegate* policyOf(EngineView* view) { return delegateOf(view).policyDelegate; }

bool mayShowPage(EngineView* view, const std::string& url) {
    const auto* const policy = policyOf(view);
    return !policy || policy->webViewMayShowPage(url);
}

std::string startURL(EngineView* view) {
    const auto* const policy = policyOf(view);
    return policy ? policy->webViewStartURL() : "";
}

/// On the error page, loads the failed URL again, except a command URL: after an empty HTTP error the command
/// has already run, and only the page's "Try again" tells the two cases apart. A form is not sent again.
void reloadPage(EngineView* view, const std::function<void()>& reload) {
    WebDataSource* const source = view.mainFrame.dataSource;
    NSURL* const address = source.unreachableURL ?: source.request.URL;
    const auto url = toOptionalText(address.absoluteString).value_or("");
    const auto* const policy = policyOf(view);
    if (!policy || policy->webViewIsCommandURL(url) || !policy->webViewMayShowPage(url))
        return;
    if (source.unreachableURL)
        delegateOf(view).view->mainFrame().loadRequest(url);
    else if (url.starts_with(policy->webViewStartURL()))
        return;
    else if ([source.request.HTTPMethod isEqualToString:@"POST"])
        delegateOf(view).view->mainFrame().loadRequest(url);
    else
        reload();
}

}  // namespace

}  // namespace vok

/// The engine's view without its keys for the history: going back to a command URL would run the command
/// again. A page's own history.back() and location.reload() do not use these methods.
@interface VOKEngineView : WebView
- (BOOL)goBack;
- (BOOL)goForward;
- (void)reload:(id)sender;
@end

@implementation VOKEngineView

- (void)reload:(id)sender {
    vok::calledFromCocoa([&] { vok::reloadPage(self, [&] { [super reload:sender]; }); });
}

- (BOOL)goBack {
    return NO;
}

- (BOOL)goForward {
    return NO;
}

@end

namespace vok {

namespace {

struct NavigationListener final : WebPolicyDecisionListener {
    void use() override { isAllowed = true; }
    bool isAllowed = false;
};

/// The decision about a new window, asked for before anything is loaded.
class NewWindowListener final : public WebPolicyDecisionListener {
public:
    NewWindowListener(WebView& target, const std::string& requested) : view(target), url(requested) {}
    void use() override { view.mainFrame().loadRequest(url); }

private:
    WebView& view;
    const std::string& url;
};

EngineView* makeView() {
    WebPreferences* const preferences = [[WebPreferences alloc] initWithIdentifier:@"Installer"];
    [preferences setPrivateBrowsingEnabled:YES];
    [preferences setJavaScriptCanOpenWindowsAutomatically:YES];
    const auto frame = NSMakeRect(0, 0, 900, 680);
    EngineView* const view = [[VOKEngineView alloc] initWithFrame:frame frameName:nil groupName:nil];
    view.preferences = preferences;
    return view;
}

}  // namespace

WebView& WebKitFrame::webView() { return view; }

/// A load of a javascript: URL would never finish.
void WebKitFrame::loadRequest(const std::string& url) {
    callCocoa([&] {
        NSURL* const target = toNSURL(url);
        if (!target.scheme) {
            showErrorPage(url, texts::addressNotSupported);
        } else if ([target.scheme.lowercaseString isEqualToString:@"javascript"] ||
                   !mayShowPage([frame webView], url)) {
            showErrorPage(url, texts::addressNotAllowed);
        } else {
            view.beginApplicationLoad();
            [frame loadRequest:[NSURLRequest requestWithURL:target]];
        }
    });
}

void WebKitFrame::showErrorPage(const std::string& url, const FailureReason& reason, bool canTryAgain) {
    Log("Failed to load '%@' (%@).", url, reason.logged);
    // An alternate page needs no navigation decision, so it does not use up the one for a new window. A local
    // page may link to any URL; the start page is a local file.
    NSURL* address = toNSURL(url);
    if (!address.scheme)
        address = toNSURL("about:blank");
    canTryAgain = canTryAgain && mayShowPage([frame webView], url);
    const auto start = startURL([frame webView]);
    const auto startAgainURL = url.starts_with(start) ? std::string() : start;
    NSString* const page = toNSString(errorPage({url, reason, canTryAgain, startAgainURL}, logCommand()));
    [frame loadAlternateHTMLString:page baseURL:toNSURL(start) forUnreachableURL:address];
}

WebKitView::WebKitView(Workspace& desktop, std::function<void(const std::string&)> showMessage)
    : workspace(desktop), onMessage(std::move(showMessage)), view(makeView()), main(*this, [view mainFrame]) {
    callbacks = [[VOKWebViewDelegate alloc] init];
    callbacks.view = this;
}

WebKitView::~WebKitView() {
    calledFromCocoa([&] {
        setShouldUpdateWhileOffscreen(false);
        view.frameLoadDelegate = nil;
        view.policyDelegate = nil;
        view.UIDelegate = nil;
        [view close];
    });
}

std::optional<std::string> WebKitView::mainFrameURL() const {
    return callCocoa([&] {
        NSString* const url = view.mainFrameURL;
        return toOptionalText(url.length ? url : nil);
    });
}

void WebKitView::setShouldCloseWithWindow(bool close) {
    callCocoa([&] { view.shouldCloseWithWindow = close; });
}

void WebKitView::setShouldUpdateWhileOffscreen(bool update) {
    callCocoa([&] {
        view.shouldUpdateWhileOffscreen = update;
        NSProcessInfo* const process = [NSProcessInfo processInfo];
        if (activity)
            [process endActivity:activity];
        activity = update ? [process beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                                       reason:@"Pages keep running in a hidden window."]
                          : nil;
    });
}

/// The engine and the network read the languages from the user defaults. The argument domain takes precedence
/// and is not stored on disk.
void WebKitView::setPreferredLanguage(const std::string& code) {
    if (!isLanguageCode(code))
        return;
    callCocoa([&] {
        NSUserDefaults* const defaults = [NSUserDefaults standardUserDefaults];
        NSMutableDictionary* const arguments =
            [NSMutableDictionary dictionaryWithDictionary:[defaults volatileDomainForName:NSArgumentDomain]];
        [arguments setObject:[NSArray arrayWithObject:toNSString(code)] forKey:@"AppleLanguages"];
        [defaults removeVolatileDomainForName:NSArgumentDomain];
        [defaults setVolatileDomain:arguments forName:NSArgumentDomain];
    });
}

void WebKitView::setFrameLoadDelegate(WebFrameLoadDelegate& delegate) {
    callbacks.frameLoadDelegate = &delegate;
    callCocoa([&] { view.frameLoadDelegate = callbacks; });
}

void WebKitView::setPolicyDelegate(WebPolicyDelegate& delegate) {
    callbacks.policyDelegate = &delegate;
    callCocoa([&] { view.policyDelegate = callbacks; });
}

void WebKitView::setUIDelegate(WebUIDelegate& delegate) {
    callbacks.uiDelegate = &delegate;
    callCocoa([&] { view.UIDelegate = callbacks; });
}

void WebKitView::loadCommitted() {
    isApplicationLoad = false;
    newWindows.closeAll();
}

bool WebKitView::allowsNavigation(const std::string& url) {
    NavigationListener decision;
    callbacks.policyDelegate->webViewDecidePolicyForNavigationAction(*this, url, decision);
    const bool isForOthers = decision.isAllowed && !isApplicationLoad && !isLoadedByWebView(url);
    if (isForOthers)
        workspace.openURL(url);
    return decision.isAllowed && !isForOthers;
}

void WebKitView::openInBrowser(const std::string& url, const std::string& method,
                               const FailureReason& reason) {
    if (callbacks.policyDelegate->webViewIsCommandURL(url))
        main.showErrorPage(url, reason);
    else if (canBrowserFetch(url, method))
        workspace.openURL(url);
    else
        onMessage(translated(callbacks.policyDelegate->webViewMayShowPage(url) ? texts::fileOfThisWindow
                                                                               : texts::addressNotAllowed));
}

void WebKitView::newWindowRequested(const std::string& url) {
    auto& target = callbacks.uiDelegate->webViewCreateWebViewWithRequest(*this, url);
    NewWindowListener listener(target, url);
    callbacks.policyDelegate->webViewDecidePolicyForNavigationAction(target, url, listener);
}

}  // namespace vok
