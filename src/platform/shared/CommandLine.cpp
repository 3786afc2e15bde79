#include "platform/shared/CommandLine.h"

#include "foundation/Log.h"
#include "platform/Bundle.h"
#include "platform/shared/WindowTitle.h"

#include <string_view>

namespace vok {

std::optional<std::string> commandLineAnswer(int argc, const char* const argv[], const Bundle& bundle) {
    if (argc != 2)
        return std::nullopt;
    const std::string_view argument = argv[1];
    if (argument == "--version")
        return StringWithFormat("%@ %@\n", windowTitle(bundle), bundle.infoDictionary()["CFBundleVersion"]);
    if (argument == "--help")
        return StringWithFormat("Usage: %s [--help | --version]\n\n"
                                "Opens the window of %@. Other arguments have no effect.\n\n"
                                "The log is written to standard error and to the system log: %@\n",
                                argv[0], windowTitle(bundle), logCommand());
    return std::nullopt;
}

}  // namespace vok
