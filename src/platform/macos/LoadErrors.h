#pragma once

#include "platform/shared/ErrorPage.h"

#import <Foundation/Foundation.h>

namespace vok {

/// Whether another load, a policy decision or a media player interrupted the load: no error for the user.
bool isInterruption(NSError* error);

/// One case of `isInterruption`: by a policy decision, or by a response without a page.
bool isPolicyInterruption(NSError* error);

/// Why a load failed, from the engine's error.
FailureReason reasonOf(NSError* error);

}  // namespace vok
