// Declarations from Apple's reference that the static check's own headers lack. No build uses this file.
#pragma once
#include_next <WebKit/WebKit.h>

extern NSString* WebKitErrorDomain;
enum { WebKitErrorFrameLoadInterruptedByPolicyChange = 102 };

enum {
    WebMenuItemTagCopyLinkToClipboard = 3,
    WebMenuItemTagCopy = 8,
    WebMenuItemTagCut = 13,
    WebMenuItemTagPaste = 14,
};

@interface WebView (Reference)
- (BOOL)goBack;
- (BOOL)goForward;
+ (BOOL)canShowMIMEType:(NSString*)MIMEType;
@end

@interface WebFrameView : NSView
@property (nonatomic) BOOL allowsScrolling;
@end

@interface WebFrame (Reference)
@property (nonatomic, readonly, strong) WebFrameView* frameView;
- (void)loadAlternateHTMLString:(NSString*)string baseURL:(NSURL*)baseURL forUnreachableURL:(NSURL*)unreachableURL;
@end

@interface WebDataSource (Reference)
@property (nonatomic, readonly, strong) NSURL* unreachableURL;
@end

@interface WebPreferences (Reference)
- (instancetype)initWithIdentifier:(NSString*)anIdentifier;
@end
