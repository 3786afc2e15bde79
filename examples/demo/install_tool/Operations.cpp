#include "Operations.h"

#include "Download.h"
#include "Package.h"
#include "Product.h"

#include <Poco/JSONString.h>

#include <chrono>
#include <stdexcept>
#include <thread>

namespace {

const std::string product(productName);

/// Reports a step, then waits a moment, so that the progress is visible although the demo's files are small.
void step(const Reporter& reporter, int percent, const std::string& message) {
    reporter.progress(percent, message);
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
}

void checkVersions(const std::string& action, const std::string& offered,
                   const std::optional<std::string>& installed) {
    if (action == "install")
        return;
    if (!installed)
        throw std::runtime_error(product + " is not installed, so there is nothing to " + action + ".");
    if (action == "upgrade" && !isOlder(*installed, offered)) {
        throw std::runtime_error(product + " " + *installed + " is installed, and " + offered +
                                 " is not newer.");
    }
    if (action == "repair" && *installed != offered) {
        throw std::runtime_error(product + " " + *installed +
                                 " is installed and cannot be repaired from the " + offered + " package.");
    }
}

Outcome install(const std::string& action, const Arguments& arguments, const Reporter& reporter) {
    const auto targetDir = arguments.get("targetDir");
    const auto configTemplateUrl = arguments.get("configTemplateUrl");
    const auto installerUrl = arguments.get("installerUrl");

    step(reporter, 5, "Checking the target directory");
    Product target(targetDir, action == "install");
    step(reporter, 20, "Downloading the configuration");
    const auto configTemplate = download(configTemplateUrl);
    step(reporter, 40, "Downloading " + product);
    const auto package = readPackage(download(installerUrl));
    step(reporter, 60, "Checking version " + package.version);
    checkVersions(action, package.version, installedVersion(targetDir));
    step(reporter, 75, "Copying files");
    target.replace(package.content,
                   fillTemplate(configTemplate, arguments.get("agentId"), package.version, targetDir),
                   package.version);
    step(reporter, 95, "Cleaning up");

    const auto done = action == "install"   ? " is installed."
                      : action == "upgrade" ? " is up to date."
                                            : " is repaired.";
    return {product + " " + package.version + done, package.version};
}

Outcome uninstall(const Arguments& arguments, const Reporter& reporter) {
    const auto targetDir = arguments.get("targetDir");
    step(reporter, 10, "Looking for " + product);
    Product target(targetDir, false);
    step(reporter, 40, "Stopping " + product);
    step(reporter, 70, "Removing files");
    target.remove();
    return {product + " has been removed from this computer.", ""};
}

}  // namespace

Outcome perform(const std::string& action, const Arguments& arguments, const Reporter& reporter) {
    return action == "uninstall" ? uninstall(arguments, reporter) : install(action, arguments, reporter);
}

std::string installedProductInfo(const Arguments& arguments) {
    const auto version = installedVersion(arguments.get("targetDir"));
    const auto members = version ? R"("installed": 1, "version": )" + Poco::toJSON(*version)
                                 : std::string(R"("installed": 0)");
    return arguments.find("print_info_prefix").value_or("{") + members +
           arguments.find("print_info_suffix").value_or("}");
}
