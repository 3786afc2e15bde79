#pragma once

#include "platform/Bundle.h"

namespace vok {

/// The directory above Contents/MacOS of the executable's real path; a symbolic link may start the program.
class ExecutableBundle final : public Bundle {
public:
    std::string bundlePath() const override;
    Dictionary infoDictionary() const override;
};

}  // namespace vok
