#pragma once

#include "platform/gtk/support/Signal.h"

#include <webkit/webkit.h>

#include <string>

namespace vok {

/// The scheme by which the start page gets the files beside it.
constexpr auto startPageScheme = "vok-start";

struct BytesUnref {
    void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};
using Bytes = std::unique_ptr<GBytes, BytesUnref>;

/// The content of the start page at `url`, a local file, for a page without an address of its own. WebKitGTK
/// takes another process for the first page of the web after a page with a local address, which costs a third
/// of the time to that page. Null if the file cannot be read, or might differ without its address: if it has
/// scripts, frames, links or forms, or is not declared to be UTF-8.
Bytes startPageContent(const std::string& url);

/// Answers with the file that the request names, from the directory of the start page at `url`.
void answerFromDirectoryOf(const std::string& url, WebKitURISchemeRequest* request);

}  // namespace vok
