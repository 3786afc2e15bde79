#pragma once

#include "Arguments.h"
#include "Reporter.h"

#include <string>

/// How a piece of work ended well.
struct Outcome {
    std::string message;  ///< a sentence for the user
    std::string version;  ///< version now installed, empty for none
};

/// Does "install", "upgrade", "repair" or "uninstall" as the arguments say, reporting every step. Raises
/// std::exception with a sentence for the user and leaves the product as it was.
Outcome perform(const std::string& action, const Arguments& arguments, const Reporter& reporter);

/// The record of the installed product between the texts `print_info_prefix` and `print_info_suffix`: the
/// members "installed" (1 or 0) and, when installed, "version". Without these two texts, between plain
/// braces.
std::string installedProductInfo(const Arguments& arguments);
