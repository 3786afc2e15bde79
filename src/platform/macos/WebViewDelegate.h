#pragma once

#include "platform/macos/WebKitView.h"

/// Tells the port's delegates what the engine says. They and the view are borrowed, and set before the engine
/// is given this object; nothing that they throw comes back.
@interface VOKWebViewDelegate : NSObject <WebFrameLoadDelegate, WebPolicyDelegate, WebUIDelegate>
@property(nonatomic, assign) vok::WebKitView* view;
@property(nonatomic, assign) vok::WebFrameLoadDelegate* frameLoadDelegate;
@property(nonatomic, assign) vok::WebPolicyDelegate* policyDelegate;
@property(nonatomic, assign) vok::WebUIDelegate* uiDelegate;
@end
