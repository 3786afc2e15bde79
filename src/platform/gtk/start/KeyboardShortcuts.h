#pragma once

#include <gtkmm/application.h>
#include <gtkmm/applicationwindow.h>

namespace vok {

class WebKitView;

/// Binds the usual keys: Ctrl+Q and Ctrl+W close `window`, F5 and Ctrl+R reload the page, F12 opens the
/// inspector, and Ctrl with plus, minus and zero zooms the page. Everything is borrowed.
void addKeyboardShortcuts(Gtk::Application& application, Gtk::ApplicationWindow& window, WebKitView& view);

}  // namespace vok
