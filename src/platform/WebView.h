#pragma once

#include <optional>
#include <string>

namespace vok {

class WebView;

/// A frame of a web view. Two frames are the same when they are the same object.
class WebFrame {
public:
    virtual ~WebFrame() = default;

    /// The web view that holds the frame.
    virtual WebView& webView() = 0;

    /// Starts loading `url` and returns; only a load that succeeds is reported to the frame-load delegate.
    /// An invalid URL fails like any other load, with the error page.
    virtual void loadRequest(const std::string& url) = 0;
};

/// By default the delegates do nothing and allow everything.
class WebFrameLoadDelegate {
public:
    virtual ~WebFrameLoadDelegate() = default;

    /// A load has begun in `frame`; it may still fail.
    virtual void webViewDidStartProvisionalLoadForFrame(WebView&, WebFrame&) {}

    /// The page in `frame` has finished loading; a response that ends early counts. Never called for a failed
    /// load, nor for the error page.
    virtual void webViewDidFinishLoadForFrame(WebView&, WebFrame&) {}

    /// The web content process has ended, and the page is lost. A new load starts a new process.
    virtual void webViewWebContentProcessDidTerminate(WebView&) {}
};

/// Receives one navigation decision, by exactly one call. An ignored navigation does not load.
class WebPolicyDecisionListener {
public:
    virtual ~WebPolicyDecisionListener() = default;
    virtual void use() = 0;
    virtual void ignore() {}
};

class WebPolicyDelegate {
public:
    virtual ~WebPolicyDelegate() = default;

    /// Asked before every navigation of every frame; answers through `listener` before it returns.
    virtual void webViewDecidePolicyForNavigationAction(WebView&, const std::string& /*requestURL*/,
                                                        WebPolicyDecisionListener& listener) {
        listener.use();
    }

    /// Whether a page at `url` runs a command when it has loaded. The view never reloads such a page by
    /// itself, nor passes its URL to another program.
    virtual bool webViewIsCommandURL(const std::string& /*url*/) const { return false; }

    /// Whether the main frame may show the page at `url`, asked after all redirects. If not, the current page
    /// stays, and `url` opens in the default browser. A page that the application has requested, or that
    /// would run a command, is replaced by the error page instead.
    virtual bool webViewMayShowPage(const std::string& /*url*/) const { return true; }

    /// Prefix of the URL of the start page, which leads to the first installation page; empty if none.
    virtual std::string webViewStartURL() const { return {}; }
};

class WebUIDelegate {
public:
    virtual ~WebUIDelegate() = default;

    /// A page requests a new window. The returned view loads `requestURL` after a navigation decision.
    virtual WebView& webViewCreateWebViewWithRequest(WebView& sender, const std::string& /*requestURL*/) {
        return sender;
    }
};

/// The one web view of the main window. Every call and every callback is on the main thread.
class WebView {
public:
    virtual ~WebView() = default;

    /// Always the same object.
    virtual WebFrame& mainFrame() = 0;

    /// URL of the main frame, as the engine normalises it; nothing before the first load.
    virtual std::optional<std::string> mainFrameURL() const = 0;

    /// Whether the view closes with its window. A view that is part of its window always does.
    virtual void setShouldCloseWithWindow(bool) {}

    /// Whether the view loads, draws and runs timers at full speed while its window is hidden.
    virtual void setShouldUpdateWhileOffscreen(bool update) = 0;

    /// The BCP 47 code that is sent as Accept-Language and that pages read as `navigator.language`; by
    /// default the user's. An invalid code is ignored. To be set before the first load.
    virtual void setPreferredLanguage(const std::string& code) = 0;

    /// Enables the engine's inspector, prints `console` calls and uncaught errors of pages to standard
    /// output, disables the page cache, and lets the user reload a command URL after a question. Does nothing
    /// where the system has its own setting for the inspector. To be called before the first load.
    virtual void enableDeveloperTools() {}

    /// The delegates are borrowed and outlive the view.
    virtual void setFrameLoadDelegate(WebFrameLoadDelegate& delegate) = 0;
    virtual void setPolicyDelegate(WebPolicyDelegate& delegate) = 0;
    virtual void setUIDelegate(WebUIDelegate& delegate) = 0;
};

}  // namespace vok
