#pragma once

#include <webkit/webkit.h>

#include <optional>
#include <string>

namespace vok {

/// The scheme by which the start page gets the files beside it.
constexpr auto startPageScheme = "vok-start";

/// The content of the start page at `url`, a local file, for a page without an address of its own. WebKitGTK
/// takes another process for the first page of the web after a page with a local address, which costs a third
/// of the time to that page. Nothing if the file cannot be read, or might differ without its address: if it
/// has scripts, frames, links or forms, or is not declared to be UTF-8.
std::optional<std::string> startPageContent(const std::string& url);

/// Answers with the file that the request names, from the directory of the start page at `url`.
void answerFromDirectoryOf(const std::string& url, WebKitURISchemeRequest* request);

}  // namespace vok
