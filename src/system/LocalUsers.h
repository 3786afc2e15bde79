#pragma once

#include "foundation/Dictionary.h"

namespace vok {

class Machine;

/// The enabled, visible user accounts of the machine: UUID to full name, or to the short name of an
/// account without a full name. Raises NSGenericException when the accounts cannot be listed.
Dictionary GetLocalUsers(const Machine& machine);

}  // namespace vok
