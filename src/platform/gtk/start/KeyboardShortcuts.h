#pragma once

#include <gtkmm/application.h>
#include <gtkmm/applicationwindow.h>

#include <functional>

namespace vok {

/// Binds the keys that people know: Ctrl+Q ends the program, Ctrl+W closes the window; Ctrl with plus, minus
/// and zero zooms the page by way of `zoomPage`, which gets the new level, 1 for the actual size.
void addKeyboardShortcuts(Gtk::Application& application, Gtk::ApplicationWindow& window,
                          std::function<void(double)> zoomPage);

}  // namespace vok
