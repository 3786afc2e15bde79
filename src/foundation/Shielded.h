#pragma once

#include "foundation/Log.h"

#include <exception>
#include <type_traits>
#include <utility>

namespace vok {

/// Calls `callback` for C or Objective-C code, whose frames no exception may cross. An exception is logged,
/// and a value-initialised result returned.
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
