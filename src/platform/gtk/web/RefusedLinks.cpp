#include "platform/gtk/web/RefusedLinks.h"

namespace vok {

namespace {

/// Name of the script world, which isolates script and message handler from the pages.
constexpr auto world = "installer";
constexpr auto handler = "refusedLink";

/// The ports are the "bad ports" of the Fetch standard.
constexpr auto script = R"(
const badPorts = new Set([0, 1, 7, 9, 11, 13, 15, 17, 19, 20, 21, 22, 23, 25, 37, 42, 43, 53, 69, 77, 79, 87, 95, 101,
  102, 103, 104, 109, 110, 111, 113, 115, 117, 119, 123, 135, 137, 139, 143, 161, 179, 389, 427, 465, 512, 513, 514,
  515, 526, 530, 531, 532, 540, 548, 554, 556, 563, 587, 601, 636, 989, 990, 993, 995, 1719, 1720, 1723, 2049, 3659,
  4045, 4190, 5060, 5061, 6000, 6566, 6665, 6666, 6667, 6668, 6669, 6679, 6697, 10080])
addEventListener("click", event => {
  const link = event.composedPath().find(node => node.localName === "a" && node.href)
  if (!link || event.defaultPrevented || !["", "_self", "_top", "_parent"].includes(link.target))
    return
  const isRefused = (link.port && badPorts.has(Number(link.port))) || link.hostname === "0.0.0.0"
  if (isRefused && link.protocol.startsWith("http"))
    webkit.messageHandlers.refusedLink.postMessage(link.href)
}))";

}  // namespace

SignalConnection watchRefusedLinks(WebKitWebView* view, std::function<void(const std::string&)> onClick) {
    WebKitUserContentManager* const content = webkit_web_view_get_user_content_manager(view);
    webkit_user_content_manager_register_script_message_handler(content, handler, world);
    g_autoptr(WebKitUserScript) watching = webkit_user_script_new_for_world(
        script, WEBKIT_USER_CONTENT_INJECT_TOP_FRAME, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, world,
        nullptr, nullptr);
    webkit_user_content_manager_add_script(content, watching);
    return connect<void(JSCValue*)>(content, "script-message-received::refusedLink",
                                    [onClick = std::move(onClick)](JSCValue* url) {
                                        g_autofree char* text = jsc_value_to_string(url);
                                        onClick(text);
                                    });
}

}  // namespace vok
