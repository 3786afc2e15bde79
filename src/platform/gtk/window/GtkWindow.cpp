#include "platform/gtk/window/GtkWindow.h"

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
    window.signal_map().connect([this] { Glib::signal_idle().connect_once([this] { showNextAlert(); }); });
}

void GtkWindow::setPage(Gtk::Widget& page) {
    page.set_size_request(640, 480);
    overlay.set_child(page);
    overlay.add_overlay(progressBar);
    window.set_focus(page);
}

void GtkWindow::performMiniaturize() { window.minimize(); }

void GtkWindow::beginAlertSheet(AlertStyle style, const std::string& title, const std::string& defaultButton,
                                const std::string& message) {
    beginAlertSheet({style, title, defaultButton, message});
}

void GtkWindow::beginAlertSheet(Alert alert) {
    waitingAlerts.push_back(std::move(alert));
    showNextAlert();
}

void GtkWindow::showLoadProgress(double progress) {
    progressBar.set_fraction(progress);
    progressBar.set_visible(progress > 0 && progress < 1);
}

/// A sheet that is shown before its window would lie behind it.
void GtkWindow::showNextAlert() {
    if (openSheet || waitingAlerts.empty() || !window.get_mapped())
        return;
    openSheet = std::make_unique<AlertSheet>(window, std::move(waitingAlerts.front()));
    waitingAlerts.pop_front();
    // Closing destroys the window at once. One that is only hidden stays in the toolkit's list, and an
    // assistive program that asks for it crashes the toolkit (seen with GTK 4.8).
    openSheet->signal_close_request().connect(
        [this] {
            Glib::signal_idle().connect_once([this] {
                const auto ended = std::exchange(openSheet, nullptr);
                ended->reportEnd();
                showNextAlert();
            });
            return false;
        },
        false);
    openSheet->present();
}

}  // namespace vok
