#pragma once

#include "platform/Bundle.h"

namespace vok {

class PropertyListReader;

/// The bundle around the running program: the directory above Contents/MacOS of the executable's real path,
/// so that starting it through a symbolic link works.
class ExecutableBundle final : public Bundle {
public:
    explicit ExecutableBundle(const PropertyListReader& propertyLists);

    std::string bundlePath() const override;
    Dictionary infoDictionary() const override;

private:
    const PropertyListReader& propertyLists;
};

}  // namespace vok
