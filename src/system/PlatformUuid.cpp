#include "system/PlatformUuid.h"

#include "foundation/StringWithFormat.h"
#include "platform/Machine.h"

namespace vok {

std::string GetPlatformUuid(const Machine& machine) { return StringWithFormat("%@", machine.platformUUID()); }

}  // namespace vok
