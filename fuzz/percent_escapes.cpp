// Escapes and unescapes any bytes.
//
// An escaped string consists of escapes and of characters that need none. Unescaping it returns the original
// if that is UTF-8, else fails. Escaping it again changes nothing only if it has no escapes. Unescaping any
// string returns the same as GLib, and fails on a malformed escape or a result that is not UTF-8.

#include "Property.h"
#include "foundation/PercentEscapes.h"

#include <glib.h>

#include <memory>
#include <optional>

using namespace vok;
using namespace vok::fuzz;

static std::optional<std::string> textIfUtf8(std::string_view bytes) {
    return isUtf8(bytes) ? std::optional<std::string>(bytes) : std::nullopt;
}

static std::optional<std::string> unescaped(std::string text) {
    return RemovePercentEscapes(text) ? std::optional(std::move(text)) : std::nullopt;
}

static std::optional<std::string> unescapedByGlib(std::string_view text) {
    const std::unique_ptr<GBytes, decltype(&g_bytes_unref)> bytes(
        g_uri_unescape_bytes(text.data(), static_cast<gssize>(text.size()), nullptr, nullptr), g_bytes_unref);
    if (!bytes)
        return std::nullopt;
    gsize size = 0;
    const auto* const data = static_cast<const char*>(g_bytes_get_data(bytes.get(), &size));
    return textIfUtf8({data, size});
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto escaped = AddPercentEscapes(text);
    require(escaped.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
                                      "-_.!~*'();/?:@&=+$,%") == escaped.npos,
            "an escaped text has no other characters");
    require(unescaped(escaped) == textIfUtf8(text), "unescaping undoes escaping");
    require((AddPercentEscapes(escaped) == escaped) == (escaped == text), "escaping twice escapes twice");
    require(unescaped(text) == unescapedByGlib(text), "unescaping does what GLib does");
    return 0;
}
