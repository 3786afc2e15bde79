#include "platform/gtk/start/Installer.h"

#include "platform/shared/WindowTitle.h"

namespace vok {

Installer::Installer(Application& application, const Bundle& bundle, const PropertyListReader& propertyLists,
                     bool plainRenderer, const std::string& iconName,
                     const ApplicationDelegateMaker& makeDelegate)
    : window(windowTitle(bundle), iconName),
      webView(
          workspace, plainRenderer, [this](double progress) { window.showLoadProgress(progress); },
          [this](Alert alert) { window.beginAlertSheet(std::move(alert)); }),
      delegate(
          makeDelegate({application, window, webView, workspace, bundle, propertyLists, urls, machine})) {
    window.setPage(webView.widget());
    window.setAskBeforeClosing([this](auto close) { webView.askBeforeClosing(std::move(close)); });
}

}  // namespace vok
