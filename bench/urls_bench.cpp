// Parsing, building and escaping URLs, compared with Poco and GLib on the same strings.

#include "app/AppDelegate.h"
#include "bridge/UrlQuery.h"
#include "foundation/PercentEscapes.h"
#include "platform/gtk/services/GlibURLParser.h"
#include "support/FakePlatform.h"

#include <Poco/URI.h>
#include <benchmark/benchmark.h>
#include <glib.h>

#include <memory>

namespace {

/// A command's query of about `size` bytes, with URLs as values.
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

/// A string of about `size` bytes, one in eight of which has to be escaped.
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

/// Poco accepts a query only as a part of a URL.
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

/// A measurement of `work` on `input`, a string of `size` bytes.
template <class Input, class Work>
void measure(const std::string& name, const Input& input, std::size_t size, Work work) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(work(input));
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
    });
}

struct Query {
    std::string name;
    std::string text;
};

void measureParsing(const Query& query) {
    const auto name = "parsing a query of " + query.name;
    const auto size = query.text.size();
    measure(name + "|installer", std::optional(query.text), size, vok::UrlQueryToDictionary);
    measure(name + "|Poco::URI", query.text, size, parseByPoco);
    measure(name + "|GLib", query.text, size, parseByGlib);
}

void measureCallback(const Query& query) {
    const auto url = "http://pages.test/?" + query.text;
    const auto callback = std::make_shared<Callback>();
    measure("building the callback URL on one of " + query.name + "|installer", url, url.size(),
            [=](const std::string& base) { return (*callback)(base); });
}

void measureEscapes(const std::string& text) {
    const auto escaped = vok::AddPercentEscapes(text);
    measure("escaping 40 kB|installer", text, text.size(), vok::AddPercentEscapes);
    measure("escaping 40 kB|GLib", text, text.size(), escapeByGlib);
    measure("unescaping to 40 kB|installer", escaped, escaped.size(), unescape);
    measure("unescaping to 40 kB|GLib", escaped, escaped.size(), unescapeByGlib);
}

}  // namespace

/// The report parses the names: what is measured, "|", by whom.
int main(int argc, char* argv[]) {
    const Query small{"40 bytes", "command=getstate&callbackUrl=%2Fdone.html"};
    const Query medium{"400 bytes", addresses(400)};
    const Query large{"40 kB", addresses(40'000)};
    for (const auto& query : {small, medium, large, Query{"40 kB, short parameters", shortParameters(40'000)},
                              Query{"40 kB, only = and &", separators(40'000)}})
        measureParsing(query);
    for (const auto& query : {small, medium, large})
        measureCallback(query);
    measureEscapes(textOf(40'000));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
