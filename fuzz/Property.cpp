#include "Property.h"

#include "foundation/Log.h"

#include <glib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

void vok::writeLogLine(const std::string&) noexcept {}

void vok::fuzz::require(bool holds, const char* property) {
    if (holds)
        return;
    std::fprintf(stderr, "Property violated: %s.\n", property);
    std::abort();
}

bool vok::fuzz::isUtf8(std::string_view text) {
    std::string withoutZeros(text);
    std::replace(withoutZeros.begin(), withoutZeros.end(), '\0', '0');  // GLib stops at a zero byte
    return g_utf8_validate(withoutZeros.data(), static_cast<gssize>(withoutZeros.size()), nullptr);
}
