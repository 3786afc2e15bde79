#include "platform/gtk/services/GlibURLParser.h"

#include "platform/gtk/support/ZeroBytes.h"

#include <Poco/String.h>
#include <glib.h>

#include <string_view>

namespace vok {

namespace {

constexpr auto flags =
    static_cast<GUriFlags>(G_URI_FLAGS_PARSE_RELAXED | G_URI_FLAGS_ENCODED | G_URI_FLAGS_SCHEME_NORMALIZE);

/// GUri would decode escapes or reject malformed ones; the web view keeps both, so "%" is passed escaped.
std::string hideEscapes(const std::string& text) { return Poco::replace(text, "%", "%25"); }
std::string showEscapes(const std::string& text) { return Poco::replace(text, "%25", "%"); }

std::string absoluteString(GUri* uri) {
    const char* const host = g_uri_get_host(uri);
    g_autofree char* lowerCaseHost = host ? g_ascii_strdown(host, -1) : nullptr;
    g_autofree char* joined =
        g_uri_join(flags, g_uri_get_scheme(uri), g_uri_get_userinfo(uri), lowerCaseHost, g_uri_get_port(uri),
                   g_uri_get_path(uri), g_uri_get_query(uri), g_uri_get_fragment(uri));
    return showEscapes(joined);
}

/// g_uri_join() rejects a path that would be parsed as (part of) a host: "http://h:1;v", "http:/..//h".
bool canBeJoined(GUri* uri) {
    const std::string_view path = g_uri_get_path(uri);
    return g_uri_get_host(uri) ? path.empty() || path.starts_with('/') : !path.starts_with("//");
}

}  // namespace

std::optional<URL> GlibURLParser::URLWithString(const std::string& text) const {
    if (hasZeroByte(text))
        return std::nullopt;
    const auto hidden = hideEscapes(text);
    g_autofree char* query = nullptr;
    if (!g_uri_split(hidden.c_str(), flags, nullptr, nullptr, nullptr, nullptr, nullptr, &query, nullptr,
                     nullptr))
        return std::nullopt;
    g_autoptr(GUri) uri = g_uri_parse(hidden.c_str(), flags, nullptr);
    return URL{uri && canBeJoined(uri) ? absoluteString(uri) : text,
               query ? std::optional(showEscapes(query)) : std::nullopt};
}

}  // namespace vok
