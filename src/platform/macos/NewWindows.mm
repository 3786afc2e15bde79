#include "platform/macos/NewWindows.h"

#include "platform/macos/Bridging.h"
#include "platform/macos/CocoaCalls.h"

#include <utility>

/// A window that is never shown, and the delegate of its view, which does not retain it.
@interface VOKNewWindow : NSObject <WebPolicyDelegate, WebUIDelegate>
@property(nonatomic, strong) WebView* view;
@property(nonatomic) std::function<void(VOKNewWindow*, const std::string&)> onAddress;
- (instancetype)initWithOpener:(WebView*)opener;
- (void)end;
- (void)closeView;
@end

@implementation VOKNewWindow

- (instancetype)initWithOpener:(WebView*)opener {
    self = [super init];
    if (self) {
        self.view = [[WebView alloc] initWithFrame:NSZeroRect frameName:nil groupName:nil];
        self.view.preferences = opener.preferences;
        self.view.policyDelegate = self;
        self.view.UIDelegate = self;
    }
    return self;
}

/// Called from a policy decision about the view or the end of a load, so the view is closed in a later
/// iteration of the run loop, which retains this object until then.
- (void)end {
    self.onAddress = nullptr;
    [self performSelector:@selector(closeView) withObject:nil afterDelay:0 inModes:@[ NSRunLoopCommonModes ]];
}

- (void)closeView {
    vok::calledFromCocoa([&] {
        self.view.policyDelegate = nil;
        self.view.UIDelegate = nil;
        [self.view close];
        self.view = nil;
    });
}

// WebPolicyDelegate

/// Allows only an empty page.
- (void)webView:(WebView*)sender
    decidePolicyForNavigationAction:(NSDictionary*)actionInformation
                            request:(NSURLRequest*)request
                              frame:(WebFrame*)frame
                   decisionListener:(id<WebPolicyDecisionListener>)listener {
    vok::calledFromCocoa([&] {
        const auto url = vok::toOptionalText(request.URL.absoluteString).value_or("");
        if (url.empty() || url.starts_with("about:")) {
            [listener use];
            return;
        }
        [listener ignore];
        if (const auto report = self.onAddress)
            report(self, url);
    });
}

// WebUIDelegate

/// By default the engine shows a panel.
- (NSString*)webView:(WebView*)sender
    runJavaScriptTextInputPanelWithPrompt:(NSString*)prompt
                              defaultText:(NSString*)defaultText
                         initiatedByFrame:(WebFrame*)frame {
    return nil;
}

@end

namespace vok {

constexpr NSUInteger mostWindows = 20;

NewWindows::NewWindows(std::function<void(const std::string&)> handler)
    : onAddress(std::move(handler)), windows([NSMutableArray array]) {}

NewWindows::~NewWindows() { closeAll(); }

::WebView* NewWindows::open(::WebView* opener) {
    if (windows.count >= mostWindows)
        return nil;
    VOKNewWindow* const window = [[VOKNewWindow alloc] initWithOpener:opener];
    window.onAddress = [this](VOKNewWindow* reported, const std::string& url) {
        [reported end];
        [windows removeObject:reported];
        onAddress(url);
    };
    [windows addObject:window];
    return window.view;
}

void NewWindows::closeAll() {
    for (VOKNewWindow* window in windows)
        [window end];
    [windows removeAllObjects];
}

}  // namespace vok
