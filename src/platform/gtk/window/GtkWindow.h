#pragma once

#include "platform/Window.h"
#include "platform/gtk/window/AlertSheet.h"
#include "platform/shared/SheetQueue.h"

#include <gtkmm/applicationwindow.h>
#include <gtkmm/overlay.h>
#include <gtkmm/progressbar.h>

#include <memory>

namespace vok {

/// The main window: the page, and a thin progress bar at its top while a page loads.
class GtkWindow final : public vok::Window {
public:
    GtkWindow(const std::string& title, const std::string& iconName);

    /// Fills the window with `page` and gives it the focus.
    void setPage(Gtk::Widget& page);

    /// `ask` is called when the user closes the window, and calls `close` if the window may close. While a
    /// sheet is open, the window closes at once.
    void setAskBeforeClosing(std::function<void(std::function<void()> close)> ask);

    /// Shows the window in front of all others.
    void present();

    void performMiniaturize() override;
    void beginAlertSheet(AlertStyle style, const std::string& title, const std::string& defaultButton,
                         const std::string& message) override;
    void beginAlertSheet(Alert alert);

    /// Progress of the load from 0 to 1; 1 when no page is loading.
    void showLoadProgress(double progress);

    Gtk::ApplicationWindow& gtkWindow() { return window; }

private:
    bool onCloseRequest();
    void show(Alert alert);

    Gtk::ApplicationWindow window;
    Gtk::Overlay overlay;
    Gtk::ProgressBar progressBar;
    std::function<void(std::function<void()>)> askBeforeClosing;
    bool mayClose = false;
    bool isAsking = false;
    bool isMiniaturized = false;  ///< by performMiniaturize, and not brought back yet
    std::unique_ptr<AlertSheet> openSheet;
    /// A sheet that is shown before its window would be behind it.
    SheetQueue sheets{[this] { return !openSheet && window.get_mapped(); }};
};

}  // namespace vok
