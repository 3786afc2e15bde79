#include "platform/macos/WebKitView.h"

#include "foundation/Log.h"
#include "platform/Workspace.h"
#include "platform/macos/Bridging.h"
#include "platform/macos/CocoaCalls.h"
#include "platform/macos/WebViewDelegate.h"
#include "platform/shared/NavigationDecisions.h"

/// The engine's view without its keys for the history: going back to a command URL would run the command
/// again. A page's own history.back() and location.reload() do not use these methods.
@interface VOKEngineView : WebView
- (BOOL)goBack;
- (BOOL)goForward;
- (void)reload:(id)sender;
@end

@implementation VOKEngineView

- (void)reload:(id)sender {
    vok::calledFromCocoa([&] {
        if (auto* const callbacks = static_cast<VOKWebViewDelegate*>(self.policyDelegate))
            callbacks.view->reload([&] { [super reload:sender]; });
    });
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

constexpr auto blankPage = "about:blank";

std::string urlOf(WebDataSource* page) {
    return toOptionalText(page.request.URL.absoluteString).value_or("");
}

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

WebKitView::WebKitView(Workspace& desktop, std::function<void(const std::string&)> showMessage)
    : workspace(desktop), onMessage(std::move(showMessage)), view(makeView()),
      newWindows([this](const std::string& url) {
          requestNewWindow(*this, *callbacks.uiDelegate, *callbacks.policyDelegate, url);
      }) {
    callbacks = [[VOKWebViewDelegate alloc] init];
    callbacks.view = this;
    callbacks.policyDelegate = &noPolicy;
}

WebKitView::~WebKitView() {
    calledFromCocoa([&] {
        [NSObject cancelPreviousPerformRequestsWithTarget:callbacks];
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

void WebKitView::loadRequest(const std::string& url) {
    callCocoa([&] { load(url); });
}

/// A load of a javascript: URL would never finish. On the error page a link to one would run the script.
void WebKitView::load(const std::string& url) {
    NSURL* const target = toNSURL(url);
    if (!target.scheme) {
        showErrorPage(url, texts::addressNotSupported);
    } else if ([target.scheme.lowercaseString isEqualToString:@"javascript"] ||
               !callbacks.policyDelegate->webViewMayShowPage(url)) {
        showErrorPage(url, texts::addressNotAllowed, false);
    } else {
        requestedURL = url;
        decidedURL = nil;
        [view.mainFrame loadRequest:[NSURLRequest requestWithURL:target]];
    }
}

void WebKitView::reload(const std::function<void()>& reloadPage) {
    WebDataSource* const page = view.mainFrame.dataSource;
    const auto url = urlOf(page);
    if (isLoadingRequest())
        return;
    if (page.unreachableURL) {
        if (!tryAgainURL.empty())
            load(tryAgainURL);
    } else if (!showsStartPage() && !callbacks.policyDelegate->webViewIsCommandURL(url)) {
        if ([page.request.HTTPMethod isEqualToString:@"POST"])
            load(url);
        else
            reloadPage();
    }
}

void WebKitView::showErrorPage(const std::string& url, const FailureReason& reason, bool canTryAgain) {
    Log("Failed to load '%@' (%@).", url, reason.logged);
    const auto& policy = *callbacks.policyDelegate;
    canTryAgain = canTryAgain && policy.webViewMayShowPage(url);
    tryAgainURL = canTryAgain ? url : "";
    const auto start = policy.webViewStartURL();
    const auto startAgainURL = url.starts_with(start) ? std::string() : start;
    NSString* const page = toNSString(errorPage({url, reason, canTryAgain, startAgainURL}, logCommand()));
    // An alternate page needs no navigation decision, so it does not use up the one for a new window. A local
    // page may link to any URL; the start page is a local file.
    NSURL* const address = toNSURL(url);
    [view.mainFrame loadAlternateHTMLString:page
                                    baseURL:toNSURL(start)
                          forUnreachableURL:address.scheme ? address : toNSURL(blankPage)];
}

bool WebKitView::isLoadingRequest() const {
    return !requestedURL.empty() && view.mainFrame.provisionalDataSource;
}

/// The base URL of the error page is the start page, too.
bool WebKitView::showsStartPage() const {
    WebDataSource* const page = view.mainFrame.dataSource;
    return !page.unreachableURL && urlOf(page).starts_with(callbacks.policyDelegate->webViewStartURL());
}

void WebKitView::loadInterrupted() {
    if (isLoadingRequest())
        return;
    const auto requested = std::exchange(requestedURL, {});
    if (!requested.empty() && showsStartPage())
        showErrorPage(requested, texts::noPage);
}

void WebKitView::loadCommitted() {
    newWindows.closeAll();
    const auto requested = std::exchange(requestedURL, {});
    const bool isBlank = urlOf(view.mainFrame.dataSource) == blankPage;
    refusedURL = isBlank && requested != blankPage ? requested : "";
}

bool WebKitView::acceptsLoadedPage() {
    if (refusedURL.empty())
        return true;
    showErrorPage(std::exchange(refusedURL, {}), texts::addressNotAllowed);
    return false;
}

/// Cancels navigation by the start page while a page loads that the application has requested. The engine
/// asks for the decision about that page before loadRequest: returns.
bool WebKitView::allowsNavigation(const std::string& url, NSURL* firstURL) {
    if (!decidedURL)
        decidedURL = firstURL;
    if (isLoadingRequest() && showsStartPage() && ![firstURL isEqual:decidedURL])
        return false;
    return vok::allowsNavigation(*this, *callbacks.policyDelegate, workspace, url, !requestedURL.empty());
}

void WebKitView::openInBrowser(const std::string& url, const std::string& method,
                               const FailureReason& reason) {
    if (callbacks.policyDelegate->webViewIsCommandURL(url))
        showErrorPage(url, reason);
    else if (canBrowserFetch(url, method))
        workspace.openURL(url);
    else
        onMessage(translated(callbacks.policyDelegate->webViewMayShowPage(url) ? texts::fileOfThisWindow
                                                                               : texts::addressNotAllowed));
}

}  // namespace vok
