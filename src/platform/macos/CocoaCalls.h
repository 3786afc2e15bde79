#pragma once

#include "foundation/Exception.h"
#include "foundation/Shielded.h"

#import <Foundation/Foundation.h>

namespace vok {

/// `exception` as an Exception: its reason, and its kind if it has the name of one, else NSGenericException.
Exception exceptionFrom(NSException* exception);

/// Calls Cocoa from C++, in an autorelease pool. An NSException is rethrown as Exception.
template <class Call>
std::invoke_result_t<Call> callCocoa(Call&& call) {
    @autoreleasepool {
        @try {
            return std::forward<Call>(call)();
        } @catch (NSException* exception) {
            throw exceptionFrom(exception);
        }
    }
}

/// Calls C++ from Cocoa. Every exception, also NSException, is logged; the result is then zero, NO or nil.
template <class Callback>
std::invoke_result_t<Callback> calledFromCocoa(Callback&& callback) noexcept {
    return shielded([&] { return callCocoa(std::forward<Callback>(callback)); });
}

}  // namespace vok
