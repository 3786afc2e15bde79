#include "commands/ExecuteScript.h"

#include "foundation/Exception.h"

#include <cstdlib>

namespace vok {

using enum ExceptionKind;

void ExecuteScript(const std::optional<std::string>& script) {
    if (!script)
        raise(NSInvalidArgumentException, "ExecuteScript: Invalid argument.");
    const int status = std::system(script->c_str());
    if (status != 0)
        raise(NSGenericException, "Failed to execute script.\nScript = %@\nError = %d", *script, status);
}

}  // namespace vok
