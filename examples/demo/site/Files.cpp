#include "Files.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

std::optional<fs::path> findFile(const fs::path& directory, const std::string& urlPath) {
    if (!urlPath.starts_with('/') || urlPath.find('\0') != std::string::npos ||
        urlPath.find("/.") != std::string::npos)
        return std::nullopt;
    std::error_code error;
    const auto root = fs::canonical(directory, error);
    const auto file = error ? fs::path() : fs::canonical(root / urlPath.substr(1), error);
    if (error || !fs::is_regular_file(file, error))
        return std::nullopt;
    const auto inside = std::ranges::mismatch(root, file).in1 == root.end();
    return inside ? std::optional(file) : std::nullopt;
}

std::string readFile(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(stream), {}};
    if (!stream.is_open() || stream.bad())
        throw std::runtime_error("The file '" + file.string() + "' cannot be read.");
    return content;
}

std::string readPage(const fs::path& file) {
    static const std::regex include(R"re( *<!--#include virtual="/([\w.-]+)" -->\n)re");
    auto page = readFile(file);
    for (std::smatch found; std::regex_search(page, found, include);) {
        const auto included = readFile(file.parent_path() / found[1].str());
        page.replace(found[0].first, found[0].second, included);
    }
    return page;
}

std::string_view mediaType(const fs::path& file) {
    static constexpr auto types = std::to_array<std::pair<std::string_view, std::string_view>>({
        {".html", "text/html; charset=utf-8"},
        {".css", "text/css; charset=utf-8"},
        {".js", "text/javascript; charset=utf-8"},
        {".svg", "image/svg+xml"},
    });
    const auto extension = file.extension().string();
    const auto type = std::ranges::find(types, extension, &decltype(types)::value_type::first);
    return type == types.end() ? "text/plain; charset=utf-8" : type->second;
}
