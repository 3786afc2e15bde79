#include "platform/gtk/services/PlistReader.h"

#include <glib.h>
#include <plist/plist.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string_view>

namespace vok {

namespace {

/// libplist allocates strings and iterators with malloc.
struct PlistFree {
    void operator()(void* memory) const { std::free(memory); }
};
using PlistText = std::unique_ptr<char, PlistFree>;

struct NodeFree {
    void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeFree>;

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
        const std::unique_ptr<char, decltype(&g_free)> converted(
            g_convert(contents.data() + bytes.size(), static_cast<gssize>(contents.size() - bytes.size()),
                      "UTF-8", encoding, nullptr, &length, nullptr),
            g_free);
        return converted ? std::string(converted.get(), length) : "";
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
    if (binary)
        plist_from_bin(contents.data(), size, &root);
    else
        plist_from_xml(contents.data(), size, &root);
    return Node(root);
}

std::string stringValue(plist_t node) {
    char* value = nullptr;
    plist_get_string_val(node, &value);
    const PlistText owned(value);
    return value ? value : "";
}

std::string booleanText(plist_t node) {
    std::uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return value ? "1" : "0";
}

std::string integerText(plist_t node) {
    std::uint64_t value = 0;
    plist_get_uint_val(node, &value);
    return std::to_string(static_cast<std::int64_t>(value));
}

std::string realText(plist_t node) {
    double value = 0;
    plist_get_real_val(node, &value);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(16);
    text << value;
    return text.str();
}

/// Dates, data and collections are converted to XML.
std::string xmlText(plist_t node) {
    char* xml = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node, &xml, &length);
    const PlistText owned(xml);
    return xml ? std::string(xml, length) : "";
}

std::string textOf(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_STRING:
        return stringValue(node);
    case PLIST_BOOLEAN:
        return booleanText(node);
    case PLIST_UINT:
        return integerText(node);
    case PLIST_REAL:
        return realText(node);
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

    plist_dict_iter newIterator = nullptr;
    plist_dict_new_iter(root.get(), &newIterator);
    const std::unique_ptr<void, PlistFree> iterator(newIterator);
    Dictionary dictionary;
    for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(root.get(), iterator.get(), &key, &value);
        const PlistText owned(key);
        if (!value)
            return dictionary;
        dictionary.insert_or_assign(key, textOf(value));
    }
}

}  // namespace vok
