#include "bridge/UrlQuery.h"

#include "foundation/Exception.h"
#include "foundation/PercentEscapes.h"

#include <utility>

namespace vok {

using enum ExceptionKind;

namespace {

/// Splits `text` at the first `separator`: returns what is before it, and leaves in `text` what follows.
std::string_view takeUntil(std::string_view& text, char separator) {
    const auto end = text.find(separator);
    const auto taken = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return taken;
}

}  // namespace

CommandParams UrlQueryToDictionary(const std::optional<std::string>& query) {
    if (!query)
        raise(NSInvalidArgumentException, "UrlQueryToDictionary: Invalid argument.");
    CommandParams params;
    auto place = params.end();  // of the last insertion, as a hint: keys in order need no search
    for (std::string_view rest = *query; !rest.empty();) {
        const auto piece = takeUntil(rest, '&');
        auto parts = piece;
        std::string key(takeUntil(parts, '='));
        if (key.empty())
            continue;
        const bool isKeyValid = RemovePercentEscapes(key);
        const auto value = takeUntil(parts, '=');
        const auto before = params.size();
        place = params.emplace_hint(place, std::move(key), value);
        if (params.size() == before)
            place->second = value;  // a repeated key
        if (!isKeyValid || !RemovePercentEscapes(place->second))
            raise(NSInvalidArgumentException, "UrlQueryToDictionary: '%@' is not percent-encoded UTF-8 text.",
                  piece);
    }
    return params;
}

}  // namespace vok
