#pragma once

#include "platform/shared/ErrorPage.h"

#include <glib.h>

namespace vok {

/// Whether the load was interrupted by another one or by a policy decision: not an error for the user.
bool isInterruption(const GError& error);

/// Why a load failed, from WebKitGTK's error.
FailureReason reasonOf(const GError& error);

}  // namespace vok
