#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Called by libFuzzer for each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace vok::fuzz {

/// Aborts, so that libFuzzer saves the input, unless `property` holds.
void require(bool holds, const char* property);

/// Whether GLib accepts `text` as UTF-8.
bool isUtf8(std::string_view text);

}  // namespace vok::fuzz
