#pragma once

#include "platform/URLParser.h"

namespace vok {

/// Parses URLs with GLib's GUri, as leniently as the web view.
class GlibURLParser final : public URLParser {
public:
    std::optional<URL> URLWithString(const std::string& text) const override;
};

}  // namespace vok
