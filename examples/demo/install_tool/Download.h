#pragma once

#include <string>

/// The content at an http URL. Raises std::runtime_error with a message for the user when the URL is invalid,
/// the server does not answer in time or reports an error, or the content is incomplete.
std::string download(const std::string& address);
