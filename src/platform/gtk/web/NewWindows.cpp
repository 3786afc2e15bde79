#include "platform/gtk/web/NewWindows.h"

#include "platform/gtk/support/Signal.h"

#include <glibmm/main.h>

#include <utility>
#include <vector>

namespace vok {

namespace {

constexpr std::size_t mostWindows = 20;

GObjectPtr<WebKitWebView> relatedView(WebKitWebView* opener) {
    return GObjectPtr<WebKitWebView>(WEBKIT_WEB_VIEW(
        g_object_ref_sink(g_object_new(WEBKIT_TYPE_WEB_VIEW, "related-view", opener, "settings",
                                       webkit_web_view_get_settings(opener), nullptr))));
}

}  // namespace

class NewWindow {
public:
    NewWindow(WebKitWebView* opener, std::function<void(const std::string&)> handler)
        : onAddress(std::move(handler)), view(relatedView(opener)) {
        connections.push_back(connect<gboolean(WebKitPolicyDecision*, WebKitPolicyDecisionType)>(
            view.get(), "decide-policy",
            [this](WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
                return type == WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION &&
                       refuse(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
            }));
        // A dialog of a page that is never shown is closed without an answer.
        connections.push_back(connect<gboolean(WebKitScriptDialog*)>(
            view.get(), "script-dialog", [](WebKitScriptDialog*) { return true; }));
    }

    GtkWidget* widget() const { return GTK_WIDGET(view.get()); }
    bool hasEnded() const { return !onAddress; }

private:
    /// False for an empty page, which the window may have.
    bool refuse(WebKitNavigationPolicyDecision* decision) {
        const std::string url = webkit_uri_request_get_uri(webkit_navigation_action_get_request(
            webkit_navigation_policy_decision_get_navigation_action(decision)));
        if (url.empty() || url.starts_with("about:"))
            return false;
        webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
        if (const auto report = std::exchange(onAddress, nullptr))
            report(url);
        return true;
    }

    std::function<void(const std::string&)> onAddress;
    GObjectPtr<WebKitWebView> view;
    std::vector<SignalConnection> connections;
};

NewWindows::NewWindows(std::function<void(const std::string&)> handler) : onAddress(std::move(handler)) {}

NewWindows::~NewWindows() = default;

GtkWidget* NewWindows::open(WebKitWebView* opener) {
    if (windows.size() >= mostWindows)
        return nullptr;
    return windows.emplace_back(opener, [this](const std::string& url) { report(url); }).widget();
}

void NewWindows::closeAll() { windows.clear(); }

/// Called from the window's own policy decision, so it is destroyed later.
void NewWindows::report(const std::string& url) {
    Glib::signal_idle().connect_once(sigc::mem_fun(*this, &NewWindows::removeEnded));
    onAddress(url);
}

void NewWindows::removeEnded() { windows.remove_if(std::mem_fn(&NewWindow::hasEnded)); }

}  // namespace vok
