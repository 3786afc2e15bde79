#pragma once

#include "platform/macos/WebKitView.h"

/// Forwards the engine's callbacks to the port's delegates. These and the view are borrowed, and set before
/// the engine gets this object. Their exceptions are logged.
@interface VOKWebViewDelegate : NSObject <WebFrameLoadDelegate, WebPolicyDelegate, WebUIDelegate>
@property(nonatomic, assign) vok::WebKitView* view;
@property(nonatomic, assign) vok::WebFrameLoadDelegate* frameLoadDelegate;
@property(nonatomic, assign) vok::WebPolicyDelegate* policyDelegate;
@property(nonatomic, assign) vok::WebUIDelegate* uiDelegate;
@end
