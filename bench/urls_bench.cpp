// Parsing, building and escaping URLs, beside what Poco and GLib do with the same texts.

#include "app/AppDelegate.h"
#include "bridge/UrlQuery.h"
#include "foundation/PercentEscapes.h"
#include "platform/gtk/GlibURLParser.h"
#include "support/FakePlatform.h"

#include <Poco/URI.h>
#include <benchmark/benchmark.h>
#include <glib.h>

#include <memory>

namespace {

using benchmark::State;

/// A command's query of about `size` bytes, with addresses for values.
std::string addresses(std::size_t size) {
    std::string query = "command=upgrade";
    for (int number = 1; query.size() < size; ++number)
        query += "&url" + std::to_string(number) + "=https%3A%2F%2Fpages.test%2Finstall%2Fagent-" +
                 std::to_string(number) + "%3Fjob%3Dupgrade-48151623%26language%3Den-GB";
    return query;
}

/// A query of about `size` bytes in as many parameters as fit.
std::string shortParameters(std::size_t size) {
    std::string query = "command=upgrade";
    for (int number = 1; query.size() < size; ++number)
        query += "&p" + std::to_string(number) + "=%2Fpages%2F" + std::to_string(number);
    return query;
}

/// A text of about `size` bytes, of which one in eight has to be escaped.
std::string textOf(std::size_t size) {
    std::string text;
    while (text.size() < size)
        text += "pages 1/";
    return text;
}

std::string separators(std::size_t size) {
    std::string query;
    while (query.size() < size)
        query += "=&";
    return query + "=";
}

struct GlibFree {
    void operator()(char* text) const { g_free(text); }
    void operator()(GHashTable* table) const { g_hash_table_unref(table); }
};

using GlibText = std::unique_ptr<char, GlibFree>;

auto parse(const std::optional<std::string>& query) { return vok::UrlQueryToDictionary(query); }

/// Poco takes a query only as a part of a URL.
auto parseByPoco(const std::string& query) {
    Poco::URI url;
    url.setRawQuery(query);
    return url.getQueryParameters();
}

auto parseByGlib(const std::string& query) {
    return std::unique_ptr<GHashTable, GlibFree>(
        g_uri_parse_params(query.data(), static_cast<gssize>(query.size()), "&", G_URI_PARAMS_NONE, nullptr));
}

auto unescape(std::string text) {
    vok::RemovePercentEscapes(text);
    return text;
}

auto escapeByGlib(const std::string& text) {
    return GlibText(g_uri_escape_string(text.c_str(), "!*'();/?:@&=+$,", false));
}

auto unescapeByGlib(const std::string& text) {
    return GlibText(g_uri_unescape_string(text.c_str(), nullptr));
}

/// Builds the callback URL with the backend's URL parser.
class Callback {
public:
    std::string operator()(const std::string& url) const {
        return installer.formatCallbackUrl(true, url, "getstate", "finished", "productState=NotInstalled");
    }

private:
    vok::test::FakePlatform desktop;
    vok::GlibURLParser urls;
    vok::AppDelegate installer{{desktop, desktop, desktop, desktop, desktop, desktop, urls, desktop}};
};

/// A measurement of `work` on `input`.
template <class Input, class Work>
void measure(const std::string& name, const Input& input, Work work) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(work(input));
    });
}

}  // namespace

/// Names are read by the report: what is measured, "|", by whom.
int main(int argc, char* argv[]) {
    const std::pair<std::string, std::string> queries[] = {
        {"40 bytes", "command=getstate&callbackUrl=%2Fdone.html"},
        {"400 bytes", addresses(400)},
        {"40 kB", addresses(40'000)},
        {"40 kB, short parameters", shortParameters(40'000)},
        {"40 kB, only = and &", separators(40'000)},
    };
    for (const auto& [size, query] : queries) {
        measure("parsing a query of " + size + "|installer", std::optional(query), parse);
        measure("parsing a query of " + size + "|Poco::URI", query, parseByPoco);
        measure("parsing a query of " + size + "|GLib", query, parseByGlib);
    }
    const auto text = textOf(40'000);
    const auto escaped = vok::AddPercentEscapes(text);
    measure("escaping 40 kB|installer", text, vok::AddPercentEscapes);
    measure("escaping 40 kB|GLib", text, escapeByGlib);
    measure("unescaping 40 kB|installer", escaped, unescape);
    measure("unescaping 40 kB|GLib", escaped, unescapeByGlib);
    const auto callback = std::make_shared<Callback>();
    for (const auto& [size, query] : queries)
        measure("building a callback URL of " + size + "|installer", "http://pages.test/?" + query,
                [=](const std::string& url) { return (*callback)(url); });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
