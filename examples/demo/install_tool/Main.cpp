#include "Arguments.h"
#include "Log.h"
#include "Operations.h"
#include "Reporter.h"

#include <Poco/String.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace {

constexpr auto actions = std::to_array<std::string_view>({"install", "upgrade", "repair", "uninstall"});

/// The error message for the user.
std::string reason(const std::exception& exception) {
    if (const auto file = dynamic_cast<const std::filesystem::filesystem_error*>(&exception))
        return file->path1().string() + " cannot be changed: " + file->code().message() + ".";
    return exception.what();
}

/// Runs the command and reports success or failure, for which the page waits.
void performAndReport(const std::string& action, const Arguments& arguments) {
    const Reporter reporter(arguments.get("reportUrl"), arguments.find("pid").value_or(""),
                            arguments.find("agentId").value_or(""), action);
    try {
        const auto outcome = perform(action, arguments, reporter);
        reporter.succeeded(outcome.message, outcome.version);
    } catch (const std::exception& exception) {
        reporter.failed(reason(exception));
        throw;
    }
}

void run(const Arguments& arguments) {
    const auto command = Poco::toLower(arguments.get("command"));
    if (command == "print_installed_product_info")
        std::cout << installedProductInfo(arguments) << std::endl;
    else if (std::ranges::find(actions, command) != actions.end())
        performAndReport(command, arguments);
    else
        throw std::runtime_error("The command '" + command + "' is unknown.");
}

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    try {
        run(Arguments(argc, argv));
        return 0;
    } catch (const std::exception& exception) {
        logFailure(reason(exception));
        return 1;
    }
}
