#pragma once

#include "platform/Bundle.h"

namespace vok {

/// The bundle around the running program: the directory above Contents/MacOS of the executable's real path,
/// so that starting it through a symbolic link works.
class ExecutableBundle final : public Bundle {
public:
    std::string bundlePath() const override;
    Dictionary infoDictionary() const override;
};

}  // namespace vok
