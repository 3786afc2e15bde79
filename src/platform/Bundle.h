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

}  // namespace vok
