#pragma once

#include "foundation/Exception.h"
#include "foundation/Shielded.h"

#import <Foundation/Foundation.h>

namespace vok {

/// The failure that `exception` stands for: its reason, and its kind where that is one of ours, else generic.
Exception exceptionFrom(NSException* exception);

/// Calls Cocoa from C++, with an autorelease pool around it. An NSException is thrown on as Exception.
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

/// Calls C++ from Cocoa. What is thrown, NSException included, is logged; the result is then zero, no or nil.
template <class Callback>
std::invoke_result_t<Callback> calledFromCocoa(Callback&& callback) noexcept {
    return shielded([&] { return callCocoa(std::forward<Callback>(callback)); });
}

}  // namespace vok
