#pragma once

#include "Arguments.h"
#include "Reporter.h"

#include <string>

/// The result of a successful command.
struct Outcome {
    std::string message;  ///< a sentence for the user
    std::string version;  ///< version now installed, empty for none
};

/// Runs the command "install", "upgrade", "repair" or "uninstall", reporting every step. Raises
/// std::exception with a message for the user, and then leaves the product unchanged.
Outcome perform(const std::string& action, const Arguments& arguments, const Reporter& reporter);

/// The record of the installed product between `print_info_prefix` and `print_info_suffix`: the members
/// "installed" (1 or 0) and, when installed, "version". Without these two arguments, between plain braces.
std::string installedProductInfo(const Arguments& arguments);
