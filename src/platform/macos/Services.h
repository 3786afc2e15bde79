#pragma once

#include "platform/Bundle.h"
#include "platform/PropertyListReader.h"
#include "platform/URLParser.h"
#include "platform/Workspace.h"

namespace vok {

// Parts of the port that Foundation and AppKit provide directly.

class MainBundle final : public Bundle {
public:
    std::string bundlePath() const override;
    Dictionary infoDictionary() const override;
};

class PlistReader final : public PropertyListReader {
public:
    std::optional<Dictionary> dictionaryWithContentsOfFile(const std::string& path) const override;
};

class NSURLParser final : public URLParser {
public:
    std::optional<URL> URLWithString(const std::string& text) const override;
};

class SharedWorkspace final : public Workspace {
public:
    void openURL(const std::string& url) override;
};

}  // namespace vok
