#pragma once

#include "platform/gtk/window/Alert.h"

#include <webkit/webkit.h>

#include <functional>
#include <optional>

namespace vok {

/// The sheet for a dialog of a script on a page in `view`: alert(), confirm(), or the question whether to
/// leave the page, titled like the window. The script waits until it ends. Nothing for prompt(), which
/// returns null.
std::optional<Alert> alertFor(WebKitWebView* view, WebKitScriptDialog* dialog);

/// A sheet with `message` about a page in `view`.
Alert messageFor(WebKitWebView* view, const std::string& message);

/// The sheet that asks whether to reload a page in `view` whose command would run again.
Alert runAgainQuestion(WebKitWebView* view, std::function<void(bool agreed)> onEnd);

/// Keeps in a page's context menu the items that edit text, the address of a link, and "Reload" if `reload`
/// is not null. Going back could run a command again, and so could WebKitGTK's own reload if the page changes
/// while the menu is open. Returns whether an item is left.
bool restrictContextMenu(WebKitContextMenu* menu, GSimpleAction* reload);

}  // namespace vok
