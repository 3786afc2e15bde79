#pragma once

#include "platform/shared/ErrorPage.h"

#import <Foundation/Foundation.h>

namespace vok {

/// Whether the load was interrupted by another one, by a policy decision or by a media player: not an error
/// for the user.
bool isInterruption(NSError* error);

/// Whether the load was interrupted by a policy decision, or by a response without a page. One case of
/// `isInterruption`.
bool isPolicyInterruption(NSError* error);

/// Why a load failed, from the engine's error.
FailureReason reasonOf(NSError* error);

}  // namespace vok
