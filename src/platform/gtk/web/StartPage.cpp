#include "platform/gtk/web/StartPage.h"

#include <libsoup/soup.h>

namespace vok {

namespace {

using Error = std::unique_ptr<GError, decltype(&g_error_free)>;

/// Whether the page in `html` draws the same without an address: UTF-8, without scripts, frames and links,
/// and with its document type first, behind which the base of its links can be put.
bool isStatic(const std::string& html) {
    constexpr auto documentType = R"(\A\s*<!doctype[^>]*>)";
    constexpr auto encoding = R"(charset\s*=\s*["']?utf-8)";
    constexpr auto moving =
        R"(<(a|area|base|embed|form|i?frame|frameset|object|script)\b|http-equiv|\son\w+\s*=)";
    const auto matches = [&](const char* pattern) {
        return g_regex_match_simple(pattern, html.c_str(), G_REGEX_CASELESS, GRegexMatchFlags());
    };
    return g_utf8_validate(html.data(), static_cast<gssize>(html.size()), nullptr) && matches(documentType) &&
           matches(encoding) && !matches(moving);
}

}  // namespace

Bytes startPageContent(const std::string& url) {
    const GObjectPtr<GFile> file(g_file_new_for_uri(url.c_str()));
    char* content = nullptr;
    gsize length = 0;
    if (!g_file_load_contents(file.get(), nullptr, &content, &length, nullptr, nullptr))
        return nullptr;
    const std::unique_ptr<char, decltype(&g_free)> read(content, g_free);
    std::string html(content, length);
    if (!isStatic(html))
        return nullptr;
    html.insert(html.find('>') + 1, std::string("<base href=") + startPageScheme + ":///>");
    return Bytes(g_bytes_new(html.data(), html.size()));
}

/// Fonts need an answer that every origin may use, since the page has no origin. Nothing is kept in the
/// memory cache, which other pages share.
void answerFromDirectoryOf(const std::string& url, WebKitURISchemeRequest* request) {
    const auto directory = url.substr(0, url.rfind('/'));
    const GObjectPtr<GFile> top(g_file_new_for_uri(directory.c_str()));
    const GObjectPtr<GFile> file(
        g_file_new_for_uri((directory + webkit_uri_scheme_request_get_path(request)).c_str()));
    GError* error = nullptr;
    GFileInputStream* const opened =
        g_file_has_prefix(file.get(), top.get()) ? g_file_read(file.get(), nullptr, &error) : nullptr;
    if (!opened) {
        const Error reason(error ? error
                                 : g_error_new(G_IO_ERROR, G_IO_ERROR_NOT_FOUND, "Not in the directory."),
                           g_error_free);
        webkit_uri_scheme_request_finish_error(request, reason.get());
        return;
    }
    const GObjectPtr<GInputStream> stream(G_INPUT_STREAM(opened));
    const GObjectPtr<GFileInfo> info(g_file_query_info(file.get(), G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE,
                                                       G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    const GObjectPtr<WebKitURISchemeResponse> response(webkit_uri_scheme_response_new(stream.get(), -1));
    if (info)
        webkit_uri_scheme_response_set_content_type(response.get(), g_file_info_get_content_type(info.get()));
    SoupMessageHeaders* const headers = soup_message_headers_new(SOUP_MESSAGE_HEADERS_RESPONSE);
    soup_message_headers_append(headers, "Access-Control-Allow-Origin", "*");
    soup_message_headers_append(headers, "Cache-Control", "no-store");
    webkit_uri_scheme_response_set_http_headers(response.get(), headers);
    webkit_uri_scheme_request_finish_with_response(request, response.get());
}

}  // namespace vok
