#include "platform/macos/WebViewDelegate.h"

#include "platform/macos/Bridging.h"
#include "platform/macos/LoadErrors.h"
#include "platform/macos/Walls.h"

namespace vok {

namespace {

/// Answers with "ignore" at its end if nobody has answered before: the engine waits for an answer.
class DecisionListener final : public WebPolicyDecisionListener {
public:
    explicit DecisionListener(id<WebPolicyDecisionListener> asking) : listener(asking) {}
    DecisionListener(const DecisionListener&) = delete;
    ~DecisionListener() override {
        if (listener)
            shielded([&] { ignore(); });
    }
    void use() override {
        callCocoa([&] { [std::exchange(listener, nil) use]; });
    }
    void ignore() override {
        callCocoa([&] { [std::exchange(listener, nil) ignore]; });
    }

private:
    id<WebPolicyDecisionListener> listener;  ///< nil once answered
};

/// Only a page loaded in place of another one has an unreachable URL.
bool isFailurePage(WebDataSource* source) { return source.unreachableURL != nil; }

bool isMain(EngineFrame* frame) { return frame == [[frame webView] mainFrame]; }

/// What a menu on the page offers beside "Reload": editing, and the address of a link. Going back could run a
/// command once more.
bool belongsInContextMenu(NSMenuItem* item) {
    switch (item.tag) {
    case WebMenuItemTagCopyLinkToClipboard:
    case WebMenuItemTagCut:
    case WebMenuItemTagCopy:
    case WebMenuItemTagPaste:
        return true;
    default:
        return false;
    }
}

/// Not the engine's own item, which would load a command URL again.
NSMenuItem* reloadItem(EngineView* view, NSString* title) {
    NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:title
                                                        action:@selector(reload:)
                                                 keyEquivalent:@""];
    item.target = view;
    return item;
}

/// Shows the alert or question of a page's script. Returns whether the user answered OK.
bool runPanel(EngineView* view, NSString* message, bool isQuestion) {
    NSAlert* const alert = [[NSAlert alloc] init];
    alert.messageText = view.window.title;
    alert.informativeText = message;
    [alert addButtonWithTitle:toNSString(translated(texts::ok))];
    if (isQuestion)
        [alert addButtonWithTitle:toNSString(translated(texts::cancel))];
    // Else a page could keep Quit, a command or a log-out from ending the application.
    NSWindow* const panel = alert.window;
    panel.preventsApplicationTerminationWhenModal = NO;
    return [alert runModal] == NSAlertFirstButtonReturn;
}

/// Empty for no request: the engine asks for a new window before it knows the address.
std::string urlOf(NSURLRequest* request) {
    return toOptionalText(request.URL.absoluteString).value_or(std::string());
}

}  // namespace

}  // namespace vok

@interface VOKWebViewDelegate ()
- (void)replaceEmptyErrorResponse:(WebDataSource*)page;
- (void)didFail:(NSError*)error inFrame:(WebFrame*)frame;
- (void)webView:(WebView*)sender setFrame:(NSRect)frame;  // of WebUIDelegate
@end

@implementation VOKWebViewDelegate
// WebFrameLoadDelegate

- (void)webView:(WebView*)sender didStartProvisionalLoadForFrame:(WebFrame*)frame {
    vok::calledFromCocoa([&] {
        // A script's open() without an address would make this page, the only one there is, an empty one.
        if (vok::isMain(frame) && !frame.provisionalDataSource.request.URL.absoluteString.length) {
            [frame stopLoading];
            return;
        }
        vok::WebKitFrame other(*self.view, frame);
        if (!vok::isFailurePage(frame.provisionalDataSource))
            self.frameLoadDelegate->webViewDidStartProvisionalLoadForFrame(
                *self.view, vok::isMain(frame) ? self.view->mainFrame() : other);
    });
}

- (void)webView:(WebView*)sender didFinishLoadForFrame:(WebFrame*)frame {
    vok::calledFromCocoa([&] {
        vok::WebKitFrame other(*self.view, frame);
        if (vok::isFailurePage(frame.dataSource))
            return;
        self.frameLoadDelegate->webViewDidFinishLoadForFrame(
            *self.view, vok::isMain(frame) ? self.view->mainFrame() : other);
        if (vok::isMain(frame) && !frame.provisionalDataSource)
            [self replaceEmptyErrorResponse:frame.dataSource];
    });
}

/// An HTTP error with a body is a page that loads like any other. A command that has run is not offered
/// again.
- (void)replaceEmptyErrorResponse:(WebDataSource*)page {
    if (page.data.length || ![page.response isKindOfClass:[NSHTTPURLResponse class]])
        return;
    const auto status = static_cast<NSHTTPURLResponse*>(page.response).statusCode;
    if (status < 400)
        return;
    const auto url = vok::urlOf(page.request);
    const auto meaning = vok::toText([NSHTTPURLResponse localizedStringForStatusCode:status]);
    self.view->mainFrame().showFailurePage(url,
                                           {vok::texts::serverError, std::to_string(status) + " " + meaning},
                                           !self.policyDelegate->webViewIsCommandURL(url));
}

- (void)webView:(WebView*)sender didFailProvisionalLoadWithError:(NSError*)error forFrame:(WebFrame*)frame {
    [self didFail:error inFrame:frame];
}

- (void)webView:(WebView*)sender didFailLoadWithError:(NSError*)error forFrame:(WebFrame*)frame {
    [self didFail:error inFrame:frame];
}

- (void)didFail:(NSError*)error inFrame:(WebFrame*)frame {
    vok::calledFromCocoa([&] {
        if (!vok::isMain(frame) || vok::isInterruption(error))
            return;
        NSString* const url = [error.userInfo objectForKey:NSURLErrorFailingURLStringErrorKey];
        self.view->mainFrame().showFailurePage(vok::toOptionalText(url).value_or(std::string()),
                                               vok::reasonOf(error));
    });
}

// WebPolicyDelegate

- (void)webView:(WebView*)sender
    decidePolicyForNavigationAction:(NSDictionary*)actionInformation
                            request:(NSURLRequest*)request
                              frame:(WebFrame*)frame
                   decisionListener:(id<WebPolicyDecisionListener>)listener {
    vok::calledFromCocoa([&] {
        vok::DecisionListener decision(listener);
        self.policyDelegate->webViewDecidePolicyForNavigationAction(*self.view, vok::urlOf(request),
                                                                    decision);
    });
}

/// A page that is a file to download would leave the view as it is, without a word.
- (void)webView:(WebView*)sender
    decidePolicyForMIMEType:(NSString*)type
                    request:(NSURLRequest*)request
                      frame:(WebFrame*)frame
           decisionListener:(id<WebPolicyDecisionListener>)listener {
    vok::calledFromCocoa([&] {
        vok::DecisionListener decision(listener);
        if ([WebView canShowMIMEType:type]) {
            decision.use();
            return;
        }
        decision.ignore();
        if (vok::isMain(frame))
            self.view->mainFrame().showFailurePage(vok::urlOf(request),
                                                   {vok::texts::typeNotSupported, vok::toText(type)});
    });
}

/// For example an address with a scheme that nobody here loads.
- (void)webView:(WebView*)sender unableToImplementPolicyWithError:(NSError*)error frame:(WebFrame*)frame {
    [self didFail:error inFrame:frame];
}

// WebUIDelegate

/// There is one view: the installer's answer can only be that one.
- (WebView*)webView:(WebView*)sender createWebViewWithRequest:(NSURLRequest*)request {
    vok::calledFromCocoa(
        [&] { self.uiDelegate->webViewCreateWebViewWithRequest(*self.view, vok::urlOf(request)); });
    return sender;
}

/// The engine has just made this window the new one: it bears the new one's name, by which the next link
/// would find it, and one opened with a size has no scroll bars.
- (void)webViewShow:(WebView*)sender {
    vok::calledFromCocoa([&] {
        [sender stringByEvaluatingJavaScriptFromString:@"window.name = ''"];
        sender.mainFrame.frameView.allowsScrolling = YES;
    });
}

- (void)webView:(WebView*)sender
    runJavaScriptAlertPanelWithMessage:(NSString*)message
                      initiatedByFrame:(WebFrame*)frame {
    vok::calledFromCocoa([&] { vok::runPanel(sender, message, false); });
}

- (BOOL)webView:(WebView*)sender
    runJavaScriptConfirmPanelWithMessage:(NSString*)message
                        initiatedByFrame:(WebFrame*)frame {
    return vok::calledFromCocoa([&] { return vok::runPanel(sender, message, true); });
}

/// Without this answer the engine would show a panel of its own, which could keep the application from
/// ending.
- (NSString*)webView:(WebView*)sender
    runJavaScriptTextInputPanelWithPrompt:(NSString*)prompt
                              defaultText:(NSString*)defaultText
                         initiatedByFrame:(WebFrame*)frame {
    return nil;
}

- (NSArray*)webView:(WebView*)sender
    contextMenuItemsForElement:(NSDictionary*)element
              defaultMenuItems:(NSArray*)defaultMenuItems {
    return vok::calledFromCocoa([&]() -> NSArray* {
        NSMutableArray* const items = [NSMutableArray array];
        for (NSMenuItem* item in defaultMenuItems) {
            if (vok::belongsInContextMenu(item))
                [items addObject:item];
            else if (item.tag == WebMenuItemTagReload)
                [items addObject:vok::reloadItem(sender, item.title)];
        }
        return items;
    });
}

// A script that takes the window for one of its own neither resizes nor closes it.

- (void)webView:(WebView*)sender setFrame:(NSRect)frame {
}

- (void)webViewClose:(WebView*)sender {
}

@end
