#include "app/AppDelegate.h"

#include "commands/RunProcess.h"
#include "config/BrowserPaths.h"
#include "foundation/StringWithFormat.h"
#include "platform/Machine.h"
#include "platform/Window.h"
#include "platform/Workspace.h"

#include <unistd.h>

namespace vok {

void AppDelegate::executeRebootCommand(const CommandParams&) {
    if (const auto failure = platform.machine.restart())
        showErrorMessage(StringWithFormat("Reboot failed.\n%@", *failure));
    else
        platform.application.terminate();
}

void AppDelegate::executeRunFirefoxCommand(const CommandParams&) {
    RunProcess(firefoxPath);
    if (access(firefoxPath, F_OK) != 0)
        platform.workspace.openFirefox();
}

void AppDelegate::executeCancelCommand(const CommandParams& params) {
    executeCommandCallback(&params, true, "");
}

void AppDelegate::executeFinishCommand(const CommandParams& params) {
    platform.application.performAfterDelay(
        0.0, [&application = platform.application] { application.terminate(); });
    executeCommandCallback(&params, true, "");
}

void AppDelegate::executeHideCommand(const CommandParams& params) {
    appWindow->performMiniaturize();
    executeCommandCallback(&params, true, "");
}

}  // namespace vok
