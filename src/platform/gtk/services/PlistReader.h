#pragma once

#include "platform/PropertyListReader.h"

namespace vok {

/// Property lists by libplist.
class PlistReader final : public PropertyListReader {
public:
    std::optional<Dictionary> dictionaryWithContentsOfFile(const std::string& path) const override;
};

}  // namespace vok
