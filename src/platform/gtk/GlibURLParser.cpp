#include "platform/gtk/GlibURLParser.h"

#include <glib.h>

#include <memory>

namespace vok {

namespace {

struct GlibFree {
    void operator()(char* text) const { g_free(text); }
    void operator()(GUri* uri) const { g_uri_unref(uri); }
};

constexpr auto flags =
    static_cast<GUriFlags>(G_URI_FLAGS_PARSE_RELAXED | G_URI_FLAGS_ENCODED | G_URI_FLAGS_SCHEME_NORMALIZE);

}  // namespace

std::optional<URL> GlibURLParser::URLWithString(const std::string& text) const {
    char* splitQuery = nullptr;
    const bool valid = g_uri_split(text.c_str(), flags, nullptr, nullptr, nullptr, nullptr, nullptr,
                                   &splitQuery, nullptr, nullptr);
    const std::unique_ptr<char, GlibFree> query(splitQuery);
    if (!valid)
        return std::nullopt;

    URL url{text, std::nullopt};
    if (query)
        url.query = query.get();
    if (const std::unique_ptr<GUri, GlibFree> absolute{g_uri_parse(text.c_str(), flags, nullptr)}) {
        const std::unique_ptr<char, GlibFree> normalised(g_uri_to_string(absolute.get()));
        url.absoluteString = normalised.get();
    }
    return url;
}

}  // namespace vok
