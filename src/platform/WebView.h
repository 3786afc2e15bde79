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
    /// A string that is no URL fails like any other load, with the error page.
    virtual void loadRequest(const std::string& url) = 0;
};

/// The delegates do nothing, or allow, unless overridden.
class WebFrameLoadDelegate {
public:
    virtual ~WebFrameLoadDelegate() = default;

    /// A load has begun in `frame`; it may still fail.
    virtual void webViewDidStartProvisionalLoadForFrame(WebView&, WebFrame&) {}

    /// The page in `frame` has loaded to its end, or as far as it let itself be loaded. Never called for a
    /// failed load, nor for the page that a backend shows in place of one.
    virtual void webViewDidFinishLoadForFrame(WebView&, WebFrame&) {}

    /// The process that drew the page is gone, and the page with it. A new load starts a new process.
    virtual void webViewWebContentProcessDidTerminate(WebView&) {}
};

/// Answers one navigation decision; exactly one call. What is not used does not load.
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

    /// Does a page at `url` run a command when it has loaded? The view never loads such a page again by
    /// itself, nor hands its URL to another program.
    virtual bool webViewIsCommandURL(const std::string& /*url*/) const { return false; }

    /// May the main frame show the page at `url`, to which a load has led after all redirects? If not, the
    /// view keeps its page and leaves the other one to the default browser; the error page takes the place of
    /// a page that the application asked for and of one that would run a command.
    virtual bool webViewMayShowPage(const std::string& /*url*/) const { return true; }

    /// What the URL of the page that leads to the first installation page begins with; empty for none.
    virtual std::string webViewStartURL() const { return {}; }
};

class WebUIDelegate {
public:
    virtual ~WebUIDelegate() = default;

    /// A page asks for a new window. The view returned is the one that then loads `requestURL`, asking for a
    /// navigation decision first.
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

    /// Does the view close together with its window? A view that is a part of its window always does.
    virtual void setShouldCloseWithWindow(bool) {}

    /// Does the view load, draw and run timers at full speed while its window is hidden?
    virtual void setShouldUpdateWhileOffscreen(bool update) = 0;

    /// The language that pages are asked for and see as `navigator.language`, by its BCP 47 code; by default
    /// that of the user. A string that is no such code changes nothing. To be set before the first load.
    virtual void setPreferredLanguage(const std::string& code) = 0;

    /// Lets developers look into pages by the engine's inspector, and keeps no page in a cache. Does nothing
    /// where the engine has a switch of its own. To be called before the first load.
    virtual void enableDeveloperTools() {}

    /// The delegates are borrowed and outlive the view.
    virtual void setFrameLoadDelegate(WebFrameLoadDelegate& delegate) = 0;
    virtual void setPolicyDelegate(WebPolicyDelegate& delegate) = 0;
    virtual void setUIDelegate(WebUIDelegate& delegate) = 0;
};

}  // namespace vok
