#pragma once

#include "platform/gtk/window/Alert.h"

#include <webkit/webkit.h>

#include <optional>

namespace vok {

/// The sheet for a dialog of a script on a page in `view`: alert(), confirm(), or the question whether to
/// leave the page, titled like the window. The script waits until it ends. Nothing for prompt(), which
/// returns null.
std::optional<Alert> alertFor(WebKitWebView* view, WebKitScriptDialog* dialog);

/// A sheet that tells `message` about a page in `view`.
Alert messageFor(WebKitWebView* view, const std::string& message);

/// Leaves in a page's context menu what edits text, the address of a link, and "Reload" where `reload` is not
/// null: going back could run a command once more, as would WebKitGTK's own reload if the page has changed
/// while the menu was open. Is there anything left to show?
bool restrictContextMenu(WebKitContextMenu* menu, GSimpleAction* reload);

}  // namespace vok
