#include "app/AppDelegate.h"

#include "commands/ExecuteScript.h"
#include "config/DictionaryLookup.h"
#include "foundation/PercentEscapes.h"
#include "foundation/StringWithFormat.h"

namespace vok {

/// The launch-as-admin tool starts the install tool. No value is quoted for the shell.
constexpr auto installFormat =
    "/bin/bash -c '\"%@\" \"%@\" \"command=%@\" \"pid=%@\" \"agentId=%@\" \"targetDir=%@\" "
    "\"configTemplateUrl=%@\" \"installerUrl=%@\" \"reportUrl=%@\"' &";

constexpr auto uninstallFormat =
    "/bin/bash -c '\"%@\" \"%@\" \"command=uninstall\" \"pid=%@\" \"agentId=%@\" \"targetDir=%@\" "
    "\"reportUrl=%@\"' &";

void AppDelegate::executeInstallCommand(const CommandParams& params) {
    const auto targetDir = getTargetDirForAgent(agentId);
    const auto adminTool = getLaunchAsAdminToolPath();
    const auto installTool = getInstallToolPath();
    const auto command = GetStringFromDict(&params, "command");
    const auto configTemplateUrl = AddPercentEscapes(GetStringFromDict(&params, "configTemplateUrl"));
    const auto installerUrl = AddPercentEscapes(GetStringFromDict(&params, "installerUrl"));
    const auto reportUrl = AddPercentEscapes(GetStringFromDict(&params, "reportUrl"));
    ExecuteScript(StringWithFormat(installFormat, adminTool, installTool, command, installationId, agentId,
                                   targetDir, configTemplateUrl, installerUrl, reportUrl));
}

void AppDelegate::executeUninstallCommand(const CommandParams& params) {
    const auto targetDir = getTargetDirForAgent(agentId);
    const auto adminTool = getLaunchAsAdminToolPath();
    const auto installTool = getInstallToolPath();
    const auto reportUrl = AddPercentEscapes(GetStringFromDict(&params, "reportUrl"));
    ExecuteScript(StringWithFormat(uninstallFormat, adminTool, installTool, installationId, agentId,
                                   targetDir, reportUrl));
}

}  // namespace vok
