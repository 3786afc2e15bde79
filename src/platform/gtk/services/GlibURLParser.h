#pragma once

#include "platform/URLParser.h"

namespace vok {

/// URLs by GLib's GUri, read as leniently as the web view reads them.
class GlibURLParser final : public URLParser {
public:
    std::optional<URL> URLWithString(const std::string& text) const override;
};

}  // namespace vok
