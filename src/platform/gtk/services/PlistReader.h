#pragma once

#include "platform/PropertyListReader.h"

namespace vok {

/// Reads property lists with libplist.
class PlistReader final : public PropertyListReader {
public:
    std::optional<Dictionary> dictionaryWithContentsOfFile(const std::string& path) const override;
};

}  // namespace vok
