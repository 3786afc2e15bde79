#include "platform/macos/WebViewDelegate.h"

#include "platform/macos/Bridging.h"
#include "platform/macos/CocoaCalls.h"
#include "platform/macos/LoadErrors.h"
#include "platform/macos/PageDialogs.h"
#include "platform/shared/NavigationDecisions.h"

namespace vok {

namespace {

/// Answers with "ignore" when destroyed, if there was no answer before: the engine waits for one.
class DecisionAnswer {
public:
    explicit DecisionAnswer(id<WebPolicyDecisionListener> asking) : listener(asking) {}
    DecisionAnswer(const DecisionAnswer&) = delete;
    ~DecisionAnswer() {
        calledFromCocoa([&] { ignore(); });
    }
    void use() { [std::exchange(listener, nil) use]; }
    void ignore() { [std::exchange(listener, nil) ignore]; }

private:
    id<WebPolicyDecisionListener> listener;  ///< nil once answered
};

/// Only an alternate page has an unreachable URL.
bool isErrorPage(WebDataSource* source) { return source.unreachableURL != nil; }

bool isMain(EngineFrame* frame) { return frame == [[frame webView] mainFrame]; }

std::string urlOf(NSURLRequest* request) { return toOptionalText(request.URL.absoluteString).value_or(""); }

std::string contentDisposition(NSURLResponse* response) {
    if (![response isKindOfClass:[NSHTTPURLResponse class]])
        return {};
    auto* const answer = static_cast<NSHTTPURLResponse*>(response);
    return toOptionalText([answer valueForHTTPHeaderField:@"Content-Disposition"]).value_or("");
}

}  // namespace

}  // namespace vok

@interface VOKWebViewDelegate ()
- (void)replaceEmptyErrorResponse:(WebDataSource*)page;
- (void)didFail:(NSError*)error inFrame:(WebFrame*)frame;
- (void)loadInterrupted;
- (void)webView:(WebView*)sender setFrame:(NSRect)frame;  // of WebUIDelegate
@end

@implementation VOKWebViewDelegate
// WebFrameLoadDelegate

- (void)webView:(WebView*)sender didStartProvisionalLoadForFrame:(WebFrame*)frame {
    vok::calledFromCocoa([&] {
        if (vok::isMain(frame) && !vok::isErrorPage(frame.provisionalDataSource))
            self.frameLoadDelegate->webViewDidStartProvisionalLoadForFrame(*self.view,
                                                                           self.view->mainFrame());
    });
}

- (void)webView:(WebView*)sender didCommitLoadForFrame:(WebFrame*)frame {
    vok::calledFromCocoa([&] {
        if (vok::isMain(frame))
            self.view->loadCommitted();
    });
}

/// A new fragment commits no load.
- (void)webView:(WebView*)sender didChangeLocationWithinPageForFrame:(WebFrame*)frame {
    vok::calledFromCocoa([&] {
        if (vok::isMain(frame) && !frame.provisionalDataSource)
            self.view->takeApplicationLoad();
    });
}

- (void)webView:(WebView*)sender didFinishLoadForFrame:(WebFrame*)frame {
    vok::calledFromCocoa([&] {
        if (!vok::isMain(frame) || vok::isErrorPage(frame.dataSource) || !self.view->acceptsLoadedPage())
            return;
        self.frameLoadDelegate->webViewDidFinishLoadForFrame(*self.view, self.view->mainFrame());
        if (!frame.provisionalDataSource)
            [self replaceEmptyErrorResponse:frame.dataSource];
    });
}

/// An HTTP error with a body loads like any other page. A command that has run is not offered again.
- (void)replaceEmptyErrorResponse:(WebDataSource*)page {
    if (page.data.length || ![page.response isKindOfClass:[NSHTTPURLResponse class]])
        return;
    const auto status = static_cast<NSHTTPURLResponse*>(page.response).statusCode;
    if (status < 400)
        return;
    const auto url = vok::urlOf(page.request);
    const auto meaning = vok::toText([NSHTTPURLResponse localizedStringForStatusCode:status]);
    self.view->showErrorPage(url, {vok::texts::serverError, std::to_string(status) + " " + meaning},
                             !self.policyDelegate->webViewIsCommandURL(url));
}

- (void)webView:(WebView*)sender didFailProvisionalLoadWithError:(NSError*)error forFrame:(WebFrame*)frame {
    [self didFail:error inFrame:frame];
}

- (void)webView:(WebView*)sender didFailLoadWithError:(NSError*)error forFrame:(WebFrame*)frame {
    [self didFail:error inFrame:frame];
}

/// A response without a page, such as status 204, is an error if the application has requested the load.
- (void)didFail:(NSError*)error inFrame:(WebFrame*)frame {
    vok::calledFromCocoa([&] {
        if (!vok::isMain(frame))
            return;
        NSString* const address = [error.userInfo objectForKey:NSURLErrorFailingURLStringErrorKey];
        const auto url = vok::toOptionalText(address).value_or("");
        if (!vok::isInterruption(error))
            self.view->showErrorPage(url, vok::reasonOf(error));
        else if (vok::isPolicyInterruption(error) && self.view->takeApplicationLoad())
            self.view->showErrorPage(url, vok::texts::noPage);
        else  // the engine starts no load while it stops one
            [self performSelector:@selector(loadInterrupted)
                       withObject:nil
                       afterDelay:0
                          inModes:@[ NSRunLoopCommonModes ]];
    });
}

- (void)loadInterrupted {
    vok::calledFromCocoa([&] { self.view->loadInterrupted(); });
}

// WebPolicyDelegate

- (void)webView:(WebView*)sender
    decidePolicyForNavigationAction:(NSDictionary*)actionInformation
                            request:(NSURLRequest*)request
                              frame:(WebFrame*)frame
                   decisionListener:(id<WebPolicyDecisionListener>)listener {
    vok::calledFromCocoa([&] {
        vok::DecisionAnswer answer(listener);
        NSURL* const firstURL = [actionInformation objectForKey:WebActionOriginalURLKey];
        if (self.view->allowsNavigation(vok::urlOf(request), firstURL))
            answer.use();
    });
}

/// In a subframe, a type that cannot be shown leaves the frame empty, and a PDF is shown.
- (void)webView:(WebView*)sender
    decidePolicyForMIMEType:(NSString*)type
                    request:(NSURLRequest*)request
                      frame:(WebFrame*)frame
           decisionListener:(id<WebPolicyDecisionListener>)listener {
    vok::calledFromCocoa([&] {
        vok::DecisionAnswer answer(listener);
        const bool isMain = vok::isMain(frame);
        const auto mimeType = vok::toText(type);
        const auto disposition = vok::contentDisposition(frame.provisionalDataSource.response);
        const bool isSupported = [WebView canShowMIMEType:type];
        const bool isFile = vok::isFile(isMain ? mimeType : "", disposition);
        const bool mayShow = !isMain || self.policyDelegate->webViewMayShowPage(vok::urlOf(request));
        if (mayShow && isSupported && !isFile) {
            answer.use();
            return;
        }
        // The answer interrupts the load, which would show another error page.
        const bool isApplicationLoad = isMain && self.view->takeApplicationLoad();
        answer.ignore();
        const auto reason = !mayShow      ? vok::FailureReason(vok::texts::addressNotAllowed)
                            : isSupported ? vok::FailureReason(vok::texts::isDownload)
                                          : vok::FailureReason(vok::texts::typeNotSupported, mimeType);
        if (isApplicationLoad)
            self.view->showErrorPage(vok::urlOf(request), reason);
        else if (isMain || isFile)
            self.view->openInBrowser(vok::urlOf(request), vok::toText(request.HTTPMethod), reason);
    });
}

/// For example a scheme that the engine does not load, in a URL that the application has requested.
- (void)webView:(WebView*)sender unableToImplementPolicyWithError:(NSError*)error frame:(WebFrame*)frame {
    [self didFail:error inFrame:frame];
}

// WebUIDelegate

- (WebView*)webView:(WebView*)sender createWebViewWithRequest:(NSURLRequest*)request {
    return vok::calledFromCocoa([&] { return self.view->openNewWindow(); });
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

/// Without this method the engine would show its own panel, which could keep the application from ending.
- (NSString*)webView:(WebView*)sender
    runJavaScriptTextInputPanelWithPrompt:(NSString*)prompt
                              defaultText:(NSString*)defaultText
                         initiatedByFrame:(WebFrame*)frame {
    return nil;
}

- (void)webView:(WebView*)sender
    runOpenPanelForFileButtonWithResultListener:(id<WebOpenPanelResultListener>)listener
                             allowMultipleFiles:(BOOL)allowMultipleFiles {
    vok::calledFromCocoa([&] { vok::chooseFiles(sender, listener, allowMultipleFiles); });
}

- (void)webView:(WebView*)sender printFrameView:(WebFrameView*)frameView {
    vok::calledFromCocoa(
        [&] { [[frameView printOperationWithPrintInfo:[NSPrintInfo sharedPrintInfo]] runOperation]; });
}

- (NSArray*)webView:(WebView*)sender
    contextMenuItemsForElement:(NSDictionary*)element
              defaultMenuItems:(NSArray*)defaultMenuItems {
    return vok::calledFromCocoa([&] { return vok::contextMenuItems(sender, defaultMenuItems); });
}

/// Without WebDragDestinationActionLoad, by which a file or link would replace the page.
- (NSUInteger)webView:(WebView*)sender
    dragDestinationActionMaskForDraggingInfo:(id<NSDraggingInfo>)draggingInfo {
    return WebDragDestinationActionDHTML | WebDragDestinationActionEdit;
}

// A script can neither resize nor close the window.

- (void)webView:(WebView*)sender setFrame:(NSRect)frame {
}

- (void)webViewClose:(WebView*)sender {
}

@end
