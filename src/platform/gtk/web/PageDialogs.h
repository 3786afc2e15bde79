#pragma once

#include "platform/gtk/window/AlertSheet.h"

#include <webkit/webkit.h>

namespace vok {

/// Answers a dialog of a page's script: alert() and confirm() by a sheet that `showSheet` shows, untitled.
/// A prompt() answers null, and no page can keep the person from leaving it.
void answerScriptDialog(WebKitScriptDialog* dialog, const std::function<void(Alert)>& showSheet);

/// Leaves in a page's context menu what edits text, and the address of a link: going back or loading again
/// could run a command once more. Is there anything left to show?
bool restrictContextMenu(WebKitContextMenu* menu);

}  // namespace vok
