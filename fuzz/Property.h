#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Called by libFuzzer with one input after the other.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace vok::fuzz {

/// Ends the process, so that the input is kept, unless `property` holds.
void require(bool holds, const char* property);

/// Whether `text` is UTF-8, in the eyes of GLib.
bool isUtf8(std::string_view text);

}  // namespace vok::fuzz
