#include "platform/gtk/web/RefusedDrops.h"

namespace vok {

namespace {

/// `refuse` is added while an event is under way, and so runs after the page's own listeners.
constexpr auto script = R"(
const refuse = event => {
  if (event.defaultPrevented || event.composedPath()[0].matches?.(":read-write, input[type=file]"))
    return
  event.preventDefault()
  event.dataTransfer.dropEffect = "none"
}
for (const type of ["dragenter", "dragover"])
  addEventListener(type, () => addEventListener(type, refuse, {once: true}), true)
)";

}  // namespace

void refuseDrops(WebKitUserContentManager* pages) {
    g_autoptr(WebKitUserScript) refusing = webkit_user_script_new_for_world(
        script, WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START,
        "installer", nullptr, nullptr);
    webkit_user_content_manager_add_script(pages, refusing);
}

}  // namespace vok
