#pragma once

#include "platform/shared/FailurePage.h"

#import <Foundation/Foundation.h>

namespace vok {

/// Was the load interrupted by another one, by a decision or by a player, so that there is nothing to tell?
bool isInterruption(NSError* error);

/// Was the load interrupted by a decision, or by an answer without a page? One case of `isInterruption`.
bool isPolicyInterruption(NSError* error);

/// Why a load failed, from the engine's error.
FailureReason reasonOf(NSError* error);

}  // namespace vok
