#pragma once

#include "app/AppDelegate.h"
#include "foundation/Exception.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace vok::test {

/// Returns the lines logged since the last call.
std::vector<std::string> takeLog();

/// Names a test after the `name` of its row.
inline constexpr auto rowName = [](const auto& test) { return std::string(test.param.name); };

/// Kind and message of the Exception that `action` raises, or "nothing".
template <class Action>
std::string failureOf(Action action) {
    try {
        action();
        return "nothing";
    } catch (const Exception& exception) {
        const bool generic = exception.kind() == ExceptionKind::NSGenericException;
        return (generic ? "generic: " : "argument: ") + exception.message();
    }
}

/// The error message for a key that is missing in a dictionary.
inline std::string missing(const std::string& key) {
    return "Failed to get '" + key + "' string from dictionary (string is not found).";
}

inline std::string errorSheet(const std::string& message) { return "critical sheet Error [OK] " + message; }

inline std::string commandFailed(const std::string& message) {
    return errorSheet("Failed to execute command.\n" + message);
}

/// The query of InstallerTest's report of `action`.
inline std::string report(const std::string& action, const std::string& params = "") {
    return "pid=PID&agentId=AGENT&action=" + action + "&event=finished&result=success&" + params;
}

/// An installer with a fake platform and a complete configuration.
struct InstallerTest : testing::Test {
    /// Launches the installer with the current configuration. Returns the events, and clears the log.
    Events start() {
        desktop.propertyLists[desktop.bundle + "/Contents/MacOS/Tools/installer_config.plist"] = config;
        installer.applicationDidFinishLaunching();
        takeLog();
        return desktop.takeEvents();
    }

    /// The events when `url` has loaded in the main frame, with "PID" for the run's identifier.
    Events finishLoad(const std::string& url) {
        desktop.currentURL = url;
        installer.webViewDidFinishLoadForFrame(desktop, desktop);
        auto events = desktop.takeEvents();
        for (auto& event : events)
            if (const auto place = event.find(pid()); place != event.npos)
                event.replace(place, 36, "PID");
        return events;
    }

    /// The events when the command URL with `query` has loaded.
    Events run(const std::string& query) { return finishLoad("https://pages.test/command?" + query); }

    /// The identifier of this run.
    std::string pid() const { return installer.formatCallbackUrl(true, "", "", "", "").substr(5, 36); }

    Dictionary config = {{"installTool", "install tool"},
                         {"launchAsAdminTool", "admin tool"},
                         {"agentId", "AGENT"},
                         {"targetDir", "/opt/target dir"},
                         {"lang", "en-GB"},
                         {"firstInstallationPageUrl", "https://pages.test/first"},
                         {"analyticParams", "src=a b&utm=1"},
                         {"commandUrlPrefix", "https://pages.test/command"}};
    FakePlatform desktop;
    AppDelegate installer{desktop.port()};
};

}  // namespace vok::test
