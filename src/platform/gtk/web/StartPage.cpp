#include "platform/gtk/web/StartPage.h"

#include <libsoup/soup.h>

namespace vok {

namespace {

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

std::optional<std::string> startPageContent(const std::string& url) {
    g_autoptr(GFile) file = g_file_new_for_uri(url.c_str());
    g_autofree char* content = nullptr;
    gsize length = 0;
    if (!g_file_load_contents(file, nullptr, &content, &length, nullptr, nullptr))
        return std::nullopt;
    std::string html(content, length);
    if (!isStatic(html))
        return std::nullopt;
    return html.insert(html.find('>') + 1, std::string("<base href=") + startPageScheme + ":///>");
}

/// Fonts need an answer that every origin may use, since the page has no origin. Nothing is kept in the
/// memory cache, which other pages share.
void answerFromDirectoryOf(const std::string& url, WebKitURISchemeRequest* request) {
    const auto directory = url.substr(0, url.rfind('/'));
    const auto fileURL = directory + webkit_uri_scheme_request_get_path(request);
    g_autoptr(GFile) top = g_file_new_for_uri(directory.c_str());
    g_autoptr(GFile) file = g_file_new_for_uri(fileURL.c_str());
    g_autoptr(GFileInputStream) stream = nullptr;
    g_autoptr(GError) error = nullptr;
    if (g_file_has_prefix(file, top))
        stream = g_file_read(file, nullptr, &error);
    else
        error = g_error_new(G_IO_ERROR, G_IO_ERROR_NOT_FOUND, "Not in the directory.");
    if (!stream) {
        webkit_uri_scheme_request_finish_error(request, error);
        return;
    }
    g_autoptr(WebKitURISchemeResponse) response = webkit_uri_scheme_response_new(G_INPUT_STREAM(stream), -1);
    g_autoptr(GFileInfo) info = g_file_query_info(file, G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE,
                                                  G_FILE_QUERY_INFO_NONE, nullptr, nullptr);
    if (info)
        webkit_uri_scheme_response_set_content_type(response, g_file_info_get_content_type(info));
    SoupMessageHeaders* const headers = soup_message_headers_new(SOUP_MESSAGE_HEADERS_RESPONSE);
    soup_message_headers_append(headers, "Access-Control-Allow-Origin", "*");
    soup_message_headers_append(headers, "Cache-Control", "no-store");
    webkit_uri_scheme_response_set_http_headers(response, headers);
    webkit_uri_scheme_request_finish_with_response(request, response);
}

}  // namespace vok
