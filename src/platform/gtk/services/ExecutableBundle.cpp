#include "platform/gtk/services/ExecutableBundle.h"

#include "platform/gtk/services/PlistReader.h"

#include <filesystem>

namespace vok {

std::string ExecutableBundle::bundlePath() const {
    const auto executable = std::filesystem::read_symlink("/proc/self/exe");
    return executable.parent_path().parent_path().parent_path().string();
}

Dictionary ExecutableBundle::infoDictionary() const {
    return PlistReader()
        .dictionaryWithContentsOfFile(bundlePath() + "/Contents/Info.plist")
        .value_or(Dictionary());
}

}  // namespace vok
