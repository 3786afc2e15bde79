#pragma once

#include "foundation/Log.h"

#include <exception>
#include <type_traits>
#include <utility>

namespace vok {

/// Calls `callback` where an exception must go no further: in a frame that C or Objective-C code called. What
/// is thrown is logged, and the program goes on with a value-initialised result.
template <class Callback>
std::invoke_result_t<Callback> shielded(Callback&& callback) noexcept {
    try {
        return std::forward<Callback>(callback)();
    } catch (const std::exception& exception) {
        Log("A callback failed: %s", exception.what());
    } catch (...) {
        Log("A callback failed.");
    }
    return std::invoke_result_t<Callback>();
}

}  // namespace vok
