#include "platform/macos/WebKitView.h"

#include "foundation/Log.h"
#include "platform/macos/Bridging.h"
#include "platform/macos/Walls.h"
#include "platform/macos/WebViewDelegate.h"
#include "platform/shared/FailurePage.h"

#include <functional>

namespace vok {

namespace {

/// The policy delegate of the port, null before it is set.
const WebPolicyDelegate* policyOf(EngineView* view) {
    return static_cast<VOKWebViewDelegate*>(view.policyDelegate).policyDelegate;
}

std::string startURL(EngineView* view) {
    const auto* const policy = policyOf(view);
    return policy ? policy->webViewStartURL() : "";
}

/// The failure page loads what it stands for; at a command URL it stands for one that has not run, or for an
/// empty error of one that has, and only a click on "Try again" can tell. A form is not sent again.
void reloadPage(EngineView* view, const std::function<void()>& reload) {
    WebDataSource* const source = view.mainFrame.dataSource;
    NSURL* const address = source.unreachableURL ?: source.request.URL;
    const auto url = toOptionalText(address.absoluteString).value_or("");
    const auto* const policy = policyOf(view);
    if (!policy || policy->webViewIsCommandURL(url))
        return;
    if (source.unreachableURL)
        [view.mainFrame loadRequest:[NSURLRequest requestWithURL:address]];
    else if (url.starts_with(policy->webViewStartURL()))
        return;
    else if ([source.request.HTTPMethod isEqualToString:@"POST"])
        [view.mainFrame loadRequest:[NSURLRequest requestWithURL:source.request.URL]];
    else
        reload();
}

}  // namespace

}  // namespace vok

/// The engine's view without its keys for the history: back at a command URL, the command would run again. A
/// page's own history.back() and location.reload() do not come this way.
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

void WebKitFrame::loadRequest(const std::string& url) {
    callCocoa([&] {
        NSURL* const target = toNSURL(url);
        if (target.scheme)
            [frame loadRequest:[NSURLRequest requestWithURL:target]];
        else
            showFailurePage(url, texts::addressNotSupported);
    });
}

void WebKitFrame::showFailurePage(const std::string& url, const FailureReason& reason, bool canTryAgain) {
    Log("Failed to load '%@' (%@).", url, reason.logged);
    // No navigation decision is asked for an alternate page, so it does not use up that of a new window. A
    // local page may link to any address; the start page is a local file.
    NSURL* address = toNSURL(url);
    if (!address.scheme)
        address = toNSURL("about:blank");
    const auto start = startURL([frame webView]);
    const auto startAgainURL = url.starts_with(start) ? std::string() : start;
    NSString* const page = toNSString(failurePage({url, reason, canTryAgain, startAgainURL}, logCommand()));
    [frame loadAlternateHTMLString:page baseURL:toNSURL(start) forUnreachableURL:address];
}

WebKitView::WebKitView() : view(makeView()), main(*this, [view mainFrame]) {
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
                                                       reason:@"The pages go on in a hidden window."]
                          : nil;
    });
}

/// The engine and the network read the languages from the defaults, of which those in the argument domain
/// come first and are not kept on disk.
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

}  // namespace vok
