// The part of the legacy WebView that the backend uses, from Apple's reference.
#pragma once
#import <AppKit/AppKit.h>

@class WebDataSource, WebFrame, WebFrameView, WebPreferences, WebView;

extern NSString* WebKitErrorDomain;
extern NSString* WebActionOriginalURLKey;
enum { WebKitErrorCannotShowURL = 101, WebKitErrorFrameLoadInterruptedByPolicyChange = 102 };
enum { WebDragDestinationActionDHTML = 1, WebDragDestinationActionEdit = 2 };

enum {
    WebMenuItemTagCopyLinkToClipboard = 3,
    WebMenuItemTagCopy = 8,
    WebMenuItemTagReload = 12,
    WebMenuItemTagCut = 13,
    WebMenuItemTagPaste = 14,
};

@protocol WebPolicyDecisionListener <NSObject>
- (void)use;
- (void)download;
- (void)ignore;
@end

@protocol WebPolicyDelegate <NSObject>
@optional
- (void)webView:(WebView*)webView
    decidePolicyForNavigationAction:(NSDictionary*)actionInformation
                            request:(NSURLRequest*)request
                              frame:(WebFrame*)frame
                   decisionListener:(id<WebPolicyDecisionListener>)listener;
- (void)webView:(WebView*)webView
    decidePolicyForNewWindowAction:(NSDictionary*)actionInformation
                           request:(NSURLRequest*)request
                      newFrameName:(NSString*)frameName
                  decisionListener:(id<WebPolicyDecisionListener>)listener;
- (void)webView:(WebView*)webView
    decidePolicyForMIMEType:(NSString*)type
                    request:(NSURLRequest*)request
                      frame:(WebFrame*)frame
           decisionListener:(id<WebPolicyDecisionListener>)listener;
- (void)webView:(WebView*)webView unableToImplementPolicyWithError:(NSError*)error frame:(WebFrame*)frame;
@end

@protocol WebFrameLoadDelegate <NSObject>
@optional
- (void)webView:(WebView*)sender didStartProvisionalLoadForFrame:(WebFrame*)frame;
- (void)webView:(WebView*)sender didFailProvisionalLoadWithError:(NSError*)error forFrame:(WebFrame*)frame;
- (void)webView:(WebView*)sender didCommitLoadForFrame:(WebFrame*)frame;
- (void)webView:(WebView*)sender didChangeLocationWithinPageForFrame:(WebFrame*)frame;
- (void)webView:(WebView*)sender didFinishLoadForFrame:(WebFrame*)frame;
- (void)webView:(WebView*)sender didFailLoadWithError:(NSError*)error forFrame:(WebFrame*)frame;
@end

@protocol WebOpenPanelResultListener <NSObject>
- (void)chooseFilenames:(NSArray*)fileNames;  // macOS 10.6
- (void)cancel;
@end

@protocol WebUIDelegate <NSObject>
@optional
- (WebView*)webView:(WebView*)sender createWebViewWithRequest:(NSURLRequest*)request;
- (void)webViewShow:(WebView*)sender;
- (void)webViewClose:(WebView*)sender;
- (void)webView:(WebView*)sender setFrame:(NSRect)frame;
- (void)webView:(WebView*)sender
    runJavaScriptAlertPanelWithMessage:(NSString*)message
                      initiatedByFrame:(WebFrame*)frame;
- (BOOL)webView:(WebView*)sender
    runJavaScriptConfirmPanelWithMessage:(NSString*)message
                        initiatedByFrame:(WebFrame*)frame;
- (NSString*)webView:(WebView*)sender
    runJavaScriptTextInputPanelWithPrompt:(NSString*)prompt
                              defaultText:(NSString*)defaultText
                         initiatedByFrame:(WebFrame*)frame;
- (void)webView:(WebView*)sender
    runOpenPanelForFileButtonWithResultListener:(id<WebOpenPanelResultListener>)resultListener
                             allowMultipleFiles:(BOOL)allowMultipleFiles;  // macOS 10.6
- (void)webView:(WebView*)sender printFrameView:(WebFrameView*)frameView;
- (NSArray*)webView:(WebView*)sender
    contextMenuItemsForElement:(NSDictionary*)element
              defaultMenuItems:(NSArray*)defaultMenuItems;
- (NSUInteger)webView:(WebView*)webView
    dragDestinationActionMaskForDraggingInfo:(id<NSDraggingInfo>)draggingInfo;
@end

@interface WebDataSource : NSObject
@property(nonatomic, readonly, strong) NSMutableURLRequest* request;
@property(nonatomic, readonly, strong) NSURLResponse* response;
@property(nonatomic, readonly, strong) NSURL* unreachableURL;
@property(nonatomic, readonly, copy) NSData* data;
@end

@interface WebFrameView : NSView
@property(nonatomic) BOOL allowsScrolling;
- (NSPrintOperation*)printOperationWithPrintInfo:(NSPrintInfo*)printInfo;
@end

@interface WebFrame : NSObject
@property(nonatomic, readonly, strong) WebView* webView;
@property(nonatomic, readonly, strong) WebFrameView* frameView;
@property(nonatomic, readonly, strong) WebDataSource* dataSource;
@property(nonatomic, readonly, strong) WebDataSource* provisionalDataSource;
- (void)loadRequest:(NSURLRequest*)request;
- (void)loadAlternateHTMLString:(NSString*)string
                        baseURL:(NSURL*)baseURL
              forUnreachableURL:(NSURL*)unreachableURL;
- (void)stopLoading;
@end

@interface WebPreferences : NSObject
@property(nonatomic) BOOL javaScriptCanOpenWindowsAutomatically;
@property(nonatomic) BOOL privateBrowsingEnabled;
- (instancetype)initWithIdentifier:(NSString*)anIdentifier;
@end

@interface WebView : NSView
@property(nonatomic, assign) id<WebUIDelegate> UIDelegate;
@property(nonatomic, assign) id<WebPolicyDelegate> policyDelegate;
@property(nonatomic, assign) id<WebFrameLoadDelegate> frameLoadDelegate;
@property(nonatomic, readonly, strong) WebFrame* mainFrame;
@property(nonatomic, copy) NSString* mainFrameURL;
@property(nonatomic, strong) WebPreferences* preferences;
@property(nonatomic) BOOL shouldCloseWithWindow;
@property(nonatomic) BOOL shouldUpdateWhileOffscreen;
+ (BOOL)canShowMIMEType:(NSString*)MIMEType;
- (instancetype)initWithFrame:(NSRect)frame frameName:(NSString*)frameName groupName:(NSString*)groupName;
- (void)close;
- (BOOL)goBack;
- (BOOL)goForward;
- (void)reload:(id)sender;
- (NSString*)stringByEvaluatingJavaScriptFromString:(NSString*)script;
@end
