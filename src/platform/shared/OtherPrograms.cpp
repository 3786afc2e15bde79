#include "platform/shared/OtherPrograms.h"

#include <Poco/String.h>

#include <algorithm>
#include <array>

namespace vok {

namespace {

bool hasScheme(const std::string& url, const std::string& scheme) {
    return Poco::icompare(url, 0, scheme.size(), scheme) == 0 && url.substr(scheme.size(), 1) == ":";
}

}  // namespace

bool isLoadedByWebView(const std::string& url) {
    const auto schemes = {"https", "http", "file", "about", "data", "blob", "javascript"};
    return std::any_of(schemes.begin(), schemes.end(),
                       [&](const char* scheme) { return hasScheme(url, scheme); });
}

bool canBrowserFetch(const std::string& url, const std::string& method) {
    return method == "GET" && (hasScheme(url, "https") || hasScheme(url, "http"));
}

bool isFile(const std::string& mimeType, const std::string& contentDisposition) {
    const std::string attachment = "attachment";
    return Poco::icompare(mimeType, "application/pdf") == 0 ||
           Poco::icompare(Poco::trimLeft(contentDisposition), 0, attachment.size(), attachment) == 0;
}

}  // namespace vok
