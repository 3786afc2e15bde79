#include "bridge/UrlQuery.h"

#include "foundation/Exception.h"
#include "foundation/PercentEscapes.h"

#include <algorithm>

namespace vok {

using enum ExceptionKind;

namespace {

/// Cuts `text` at the first `separator` and returns what stands before it; `text` keeps what follows.
std::string_view takeUntil(std::string_view& text, char separator) {
    const auto end = std::min(text.find(separator), text.size());
    const auto taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

std::string decode(std::string_view part) {
    auto decoded = RemovePercentEscapes(part);
    if (!decoded)
        raise(NSInvalidArgumentException, "UrlQueryToDictionary: '%@' is not percent-encoded UTF-8 text.",
              part);
    return *std::move(decoded);
}

}  // namespace

CommandParams UrlQueryToDictionary(const std::optional<std::string>& query) {
    if (!query)
        raise(NSInvalidArgumentException, "UrlQueryToDictionary: Invalid argument.");
    CommandParams params;
    for (std::string_view rest = *query; !rest.empty();) {
        auto piece = takeUntil(rest, '&');
        const auto key = takeUntil(piece, '=');
        const auto value = takeUntil(piece, '=');
        if (!key.empty())
            params.insert_or_assign(decode(key), decode(value));
    }
    return params;
}

}  // namespace vok
