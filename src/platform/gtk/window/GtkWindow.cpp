#include "platform/gtk/window/GtkWindow.h"

#include <gdk/wayland/gdkwayland.h>
#include <glibmm/main.h>

#include <utility>

namespace vok {

GtkWindow::GtkWindow(const std::string& title, const std::string& iconName) {
    progressBar.set_valign(Gtk::Align::START);
    progressBar.set_can_target(false);
    progressBar.set_visible(false);

    window.set_title(title);
    window.set_icon_name(iconName);
    window.set_default_size(900, 680);
    window.set_child(overlay);
    window.property_is_active().signal_changed().connect([this] {
        if (window.is_active())
            isMiniaturized = false;
    });
    window.signal_map().connect([this] { Glib::signal_idle().connect_once([this] { sheets.showNext(); }); });
}

void GtkWindow::setPage(Gtk::Widget& page) {
    page.set_size_request(640, 480);
    overlay.set_child(page);
    overlay.add_overlay(progressBar);
    window.set_focus(page);
}

void GtkWindow::setAskBeforeClosing(std::function<void(std::function<void()>)> ask) {
    askBeforeClosing = std::move(ask);
    window.signal_close_request().connect([this] { return onCloseRequest(); }, false);
}

/// Whether the window stays open for now.
bool GtkWindow::onCloseRequest() {
    if (mayClose || openSheet)
        return false;
    isAsking = true;
    askBeforeClosing([this] {
        mayClose = true;
        if (!isAsking)  // GTK ignores a request to close from within another
            window.close();
    });
    isAsking = false;
    return !mayClose;
}

/// On Wayland a program cannot restore a minimised window, but the compositor shows one that is mapped again.
void GtkWindow::present() {
    if (isMiniaturized && GDK_IS_WAYLAND_DISPLAY(window.get_display()->gobj())) {
        window.unminimize();  // otherwise it is minimised again when mapped
        window.set_visible(false);
    }
    window.present();
}

void GtkWindow::performMiniaturize() {
    window.minimize();
    isMiniaturized = true;
}

void GtkWindow::beginAlertSheet(AlertStyle style, const std::string& title, const std::string& defaultButton,
                                const std::string& message) {
    beginAlertSheet({style, title, defaultButton, message});
}

void GtkWindow::beginAlertSheet(Alert alert) {
    sheets.add([this, alert = std::move(alert)] { show(alert); });
}

void GtkWindow::showLoadProgress(double progress) {
    progressBar.set_fraction(progress);
    progressBar.set_visible(progress > 0 && progress < 1);
}

void GtkWindow::show(Alert alert) {
    openSheet = std::make_unique<AlertSheet>(window, std::move(alert));
    // Closing destroys the window at once. One that is only hidden stays in the toolkit's list, and an
    // assistive program that asks for it crashes the toolkit (seen with GTK 4.8).
    openSheet->signal_close_request().connect(
        [this] {
            Glib::signal_idle().connect_once([this] {
                const auto ended = std::exchange(openSheet, nullptr);
                ended->reportEnd();
                sheets.showNext();
            });
            return false;
        },
        false);
    openSheet->present();
}

}  // namespace vok
