#pragma once

#include <gtk/gtk.h>

namespace vok {

/// Refuses files and links that are dropped from other programs on `webView`. WebKitGTK loads them in place
/// of the page unless the page takes them, and such a link could run a command.
void refuseDrops(GtkWidget* webView);

}  // namespace vok
