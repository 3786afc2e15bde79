#pragma once

#include <gtkmm/application.h>
#include <gtkmm/applicationwindow.h>

#include <functional>

namespace vok {

/// Binds the usual keys: Ctrl+Q ends the program, Ctrl+W closes the window; F5 and Ctrl+R call `reloadPage`,
/// F12 `inspectPage`; Ctrl with plus, minus and zero calls `zoomPage` with the new level, 1 for the actual
/// size.
void addKeyboardShortcuts(Gtk::Application& application, Gtk::ApplicationWindow& window,
                          std::function<void(double)> zoomPage, const std::function<void()>& reloadPage,
                          const std::function<void()>& inspectPage);

}  // namespace vok
