#pragma once

#include <string>

/// The content at an http address. Raises std::runtime_error with a sentence for the user when the address is
/// none, the server does not answer in time or answers with anything but success, or the content is cut
/// short.
std::string download(const std::string& address);
