#include "platform/gtk/services/PlistReader.h"

#include <glib.h>
#include <plist/plist.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string_view>

namespace vok {

namespace {

// What libplist allocates for its caller is freed with g_free, which is the C library's free.

struct PlistFree {
    void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, PlistFree>;

// libplist reads nested collections recursively and overflows the stack at about 100,000 levels.
constexpr int maxDepth = 1000;
constexpr std::size_t maxBinarySize = 65536;  // a level takes at least two bytes
constexpr std::size_t maxSize = std::size_t{16} * 1024 * 1024;

/// The nesting depth of the elements in `xml`.
int depthOf(std::string_view xml) {
    int depth = 0;
    int deepest = 0;
    for (auto tag = xml.find('<'); tag != std::string_view::npos;) {
        const auto end = xml.find('>', tag);
        if (end == std::string_view::npos)
            break;
        const char kind = xml[tag + 1];
        if (kind == '/')
            --depth;
        else if (kind != '!' && kind != '?' && xml[end - 1] != '/')
            deepest = std::max(deepest, ++depth);
        tag = xml.find('<', end);
    }
    return deepest;
}

struct ByteOrderMark {
    std::string_view bytes;
    const char* encoding;
};

constexpr auto byteOrderMarks = std::to_array<ByteOrderMark>({
    {"\xEF\xBB\xBF", "UTF-8"},
    {"\xFF\xFE", "UTF-16LE"},
    {"\xFE\xFF", "UTF-16BE"},
});

/// `contents` in UTF-8 and without a byte order mark, which libplist does not support; empty when they are
/// not in the encoding of the mark.
std::string withoutByteOrderMark(const std::string& contents) {
    for (const auto& [bytes, encoding] : byteOrderMarks) {
        if (!contents.starts_with(bytes))
            continue;
        gsize length = 0;
        g_autofree char* converted =
            g_convert(contents.data() + bytes.size(), static_cast<gssize>(contents.size() - bytes.size()),
                      "UTF-8", encoding, nullptr, &length, nullptr);
        return converted ? std::string(converted, length) : "";
    }
    return contents;
}

Node parse(const std::string& contents) {
    if (contents.size() > maxSize)
        return nullptr;
    const auto size = static_cast<std::uint32_t>(contents.size());
    const bool binary = plist_is_binary(contents.data(), size);
    if (binary ? size > maxBinarySize : depthOf(contents) > maxDepth)
        return nullptr;
    plist_t root = nullptr;
    (binary ? plist_from_bin : plist_from_xml)(contents.data(), size, &root);
    return Node(root);
}

std::string xmlText(plist_t node) {
    g_autofree char* xml = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node, &xml, &length);
    return xml ? std::string(xml, length) : "";
}

/// Dates, data and collections are converted to XML.
std::string textOf(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_STRING: {
        const char* const value = plist_get_string_ptr(node, nullptr);
        return value ? value : "";
    }
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value ? "1" : "0";
    }
    case PLIST_UINT: {
        std::uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return std::to_string(static_cast<std::int64_t>(value));
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        std::array<char, G_ASCII_DTOSTR_BUF_SIZE> text{};
        return g_ascii_formatd(text.data(), text.size(), "%.16g", value);
    }
    default:
        return xmlText(node);
    }
}

/// libplist accepts any bytes as a string, and aborts on reading one with a zero byte.
bool isUtf8WithoutZeroBytes(plist_t root) {
    const auto xml = xmlText(root);
    return g_utf8_validate(xml.data(), static_cast<gssize>(xml.size()), nullptr);
}

}  // namespace

std::optional<Dictionary> PlistReader::dictionaryWithContentsOfFile(const std::string& path) const {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    std::ostringstream contents;
    contents << file.rdbuf();
    const auto root = parse(withoutByteOrderMark(std::move(contents).str()));
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT || !isUtf8WithoutZeroBytes(root.get()))
        return std::nullopt;

    g_autofree void* iterator = nullptr;
    plist_dict_new_iter(root.get(), &iterator);
    Dictionary dictionary;
    for (;;) {
        g_autofree char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(root.get(), iterator, &key, &value);
        if (!value)
            return dictionary;
        dictionary.insert_or_assign(key, textOf(value));
    }
}

}  // namespace vok
