#pragma once

#include "foundation/Dictionary.h"

#include <string>

namespace vok {

/// The application's own bundle.
class Bundle {
public:
    virtual ~Bundle() = default;

    /// Absolute path of the bundle directory, without a trailing separator.
    virtual std::string bundlePath() const = 0;

    /// The information dictionary, Contents/Info.plist; empty when there is none.
    virtual Dictionary infoDictionary() const = 0;
};

/// The name of the product, which titles the window: CFBundleDisplayName, or "Installer" when that is
/// missing.
std::string displayName(const Bundle& bundle);

}  // namespace vok
