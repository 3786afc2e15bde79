#pragma once

#include "foundation/Dictionary.h"
#include "platform/Application.h"
#include "platform/Platform.h"
#include "platform/WebView.h"

#include <chrono>
#include <optional>
#include <set>
#include <string>

namespace vok {

/// The installer: its state, and every operation on it. Each operation is defined in the room it belongs to.
/// All of it runs on the main thread. Unless an operation says otherwise, failures are raised as Exception
/// and passed on; "nil" is an empty optional or a null pointer.
class AppDelegate final : public ApplicationDelegate,
                          public WebFrameLoadDelegate,
                          public WebPolicyDelegate,
                          public WebUIDelegate {
public:
    explicit AppDelegate(const Platform& desktop);

    // app/AppDelegate.cpp

    /// Always true: closing the main window ends the application.
    bool applicationShouldTerminateAfterLastWindowClosed() override;
    void setWindow(Window& window);
    /// Fills the state in a fixed order and shows the splash page. A failure ends start-up with the sheet
    /// "Initialization failed." and its message; the application stays open.
    void applicationDidFinishLaunching() override;

    // config/Environment.cpp

    /// "Contents/MacOS/Tools" in the bundle: configuration, splash page and tools.
    std::string getToolsDirPath() const;
    std::string getInstallToolPath() const;
    std::string getLaunchAsAdminToolPath() const;
    /// The dictionary in installer_config.plist; raises NSGenericException when there is none.
    Dictionary loadAppConfig() const;
    /// The configured agent identifier, else the platform UUID.
    std::string getAgentId() const;
    /// The operating system as the first page gets it, unescaped.
    std::string getOsVersion() const;
    /// The configured target directory, else one named after `agent`; raises NSInvalidArgumentException when
    /// it needs `agent` and that is nil.
    std::string getTargetDirForAgent(const std::optional<std::string>& agent) const;
    /// The configured language, else the user's first one, else `defaultLang`. Raises nothing.
    std::string getPreferredLanguage(const std::string& defaultLang) const;

    // pages/PageFlow.cpp and pages/PageUrls.cpp

    /// File URL of the splash page, escaped.
    std::string getSplashPageUrl() const;
    /// URL of the first installation page with its query, escaped as a whole.
    std::string getFirstInstallationPageUrl() const;
    /// Loads the first installation page after the splash page, and runs command URLs.
    void webViewDidFinishLoadForFrame(WebView& sender, WebFrame& frame) override;

    // bridge/Dispatch.cpp

    /// Runs the command that `urlQuery` names; nil when the command URL had no query. An Exception is
    /// shown in a sheet, "Failed to execute command." and its message.
    void executeUrlQuery(const std::optional<std::string>& urlQuery);

    // commands/InstallCommands.cpp

    /// install, upgrade and repair: starts the install tool in the background, reports nothing to the page.
    void executeInstallCommand(const CommandParams& params);
    void executeUninstallCommand(const CommandParams& params);

    // commands/LifecycleCommands.cpp

    /// Asks for a restart and ends the application, or shows why it was refused; reports nothing to the page.
    void executeRebootCommand(const CommandParams& params);
    /// Starts Firefox if it is installed; reports nothing to the page.
    void executeRunFirefoxCommand(const CommandParams& params);
    void executeCancelCommand(const CommandParams& params);
    /// Queues the end of the application, then reports.
    void executeFinishCommand(const CommandParams& params);
    void executeHideCommand(const CommandParams& params);

    // commands/StateCommands.cpp

    /// Reports whether the product is installed, and its version. Blocks until the install tool has answered.
    void executeGetStateCommand(const CommandParams& params);
    /// Reports the browsers found at start-up.
    void executeGetBrowsersCommand(const CommandParams& params);

    // bridge/Callback.cpp

    /// Reports the end of a command to the page that sent it. `params` are the command's result parameters,
    /// empty or in query form. Raises NSInvalidArgumentException when an argument, or both the callback and
    /// the report URL are missing.
    void executeCommandCallback(const CommandParams* commandParams, bool succeeded,
                                const std::optional<std::string>& params);
    void processCallbackUrl(bool succeeded, const std::optional<std::string>& redirectUrl,
                            const std::optional<std::string>& reportUrl,
                            const std::optional<std::string>& action, const std::optional<std::string>& event,
                            const std::optional<std::string>& params);
    /// `baseUrl` with the report added to its query. Nothing is escaped.
    std::string formatCallbackUrl(bool succeeded, const std::optional<std::string>& baseUrl,
                                  const std::optional<std::string>& action,
                                  const std::optional<std::string>& event,
                                  const std::optional<std::string>& params) const;

    // pages/PageFlow.cpp and pages/Messages.cpp

    void navigateTo(const std::string& url);
    /// Loads `url` unless the web view shows it already, or shows nothing yet.
    void ensureNavigatedTo(const std::string& url);
    void showInfoMessage(const std::string& text);
    void showErrorMessage(const std::string& text);
    /// Allows every navigation but the one that follows a request for a new window, which opens in the
    /// default browser.
    void webViewDecidePolicyForNavigationAction(WebView& sender, const std::string& requestURL,
                                                WebPolicyDecisionListener& listener) override;
    bool webViewIsCommandURL(const std::string& url) const override;
    /// Allows every page but those on hosts that are not in `pageHosts`.
    bool webViewMayShowPage(const std::string& url) const override;
    std::string webViewStartURL() const override { return getSplashPageUrl(); }
    WebView& webViewCreateWebViewWithRequest(WebView& sender, const std::string& requestURL) override;
    /// Loads the splash page, which leads to the first installation page; the page that crashed may have been
    /// a command URL and is never loaded again. The third crash in a short time shows a sheet instead.
    void webViewWebContentProcessDidTerminate(WebView& sender) override;

private:
    /// appConfig, null before it is loaded.
    const Dictionary* config() const { return appConfig ? &*appConfig : nullptr; }

    Platform platform;

    std::string installationId;  ///< random UUID of this run, sent as "pid"
    std::optional<std::string> agentId;
    std::optional<std::string> preferredLang;
    Window* appWindow = nullptr;
    std::optional<Dictionary> appConfig;  ///< installer_config.plist
    bool openUrlInNewWindow = false;  ///< the next navigation decision sends its URL to the default browser
    std::optional<std::string> versionChrome;
    std::optional<std::string> versionFireFox;
    std::optional<std::string> versionSafari;
    WebView* webView;
    std::optional<std::set<std::string>> pageHosts;  ///< unset when all hosts are allowed
    int crashCount = 0;  ///< of the web content process, each soon after the one before
    std::chrono::steady_clock::time_point lastCrash;
};

}  // namespace vok
