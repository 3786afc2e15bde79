#include "app/AppDelegate.h"

#include "platform/Window.h"

namespace vok {

void AppDelegate::showInfoMessage(const std::string& text) {
    appWindow->beginAlertSheet(AlertStyle::informational, "Info", "OK", text);
}

void AppDelegate::showErrorMessage(const std::string& text) {
    appWindow->beginAlertSheet(AlertStyle::critical, "Error", "OK", text);
}

}  // namespace vok
