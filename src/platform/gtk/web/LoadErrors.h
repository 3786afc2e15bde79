#pragma once

#include "platform/shared/ErrorPage.h"

#include <glib.h>

namespace vok {

/// Was the load interrupted by another one or by a decision, so that there is nothing to tell?
bool isInterruption(const GError& error);

/// Why a load failed, from WebKitGTK's error.
FailureReason reasonOf(const GError& error);

}  // namespace vok
