#include "Product.h"

#include "Package.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view currentLink = "current";
constexpr std::string_view newLink = "current.new";
constexpr std::string_view releasePrefix = "release-";
constexpr std::string_view recordFile = "product.record";
constexpr auto releaseFiles = std::to_array<std::string_view>({"agent.txt", "agent.conf", recordFile});

void writeFile(const fs::path& file, const std::string& content) {
    std::ofstream stream(file, std::ios::binary);
    stream << content;
    stream.close();
    if (!stream)
        throw std::runtime_error("The file '" + file.string() + "' cannot be written.");
}

/// Directory of the release in use; nothing when there is none, or the link has another target.
std::optional<fs::path> currentRelease(const fs::path& targetDir) {
    std::error_code error;
    const auto name = fs::read_symlink(targetDir / currentLink, error);
    if (error || name.has_parent_path() || !name.string().starts_with(releasePrefix))
        return std::nullopt;
    return targetDir / name;
}

/// Removes the files of a release, and its directory unless it has other files.
void removeRelease(const fs::path& release) noexcept {
    std::error_code ignored;
    for (const auto name : releaseFiles)
        fs::remove(release / name, ignored);
    fs::remove(release, ignored);
}

/// A release that is being written; deleted on destruction unless it was kept.
class NewRelease {
public:
    explicit NewRelease(const fs::path& targetDir) {
        const auto stamp = std::chrono::system_clock::now().time_since_epoch().count();
        path = targetDir / (std::string(releasePrefix) + std::to_string(stamp));
        fs::create_directory(path);
    }
    ~NewRelease() {
        if (!kept)
            removeRelease(path);
    }
    NewRelease(const NewRelease&) = delete;
    NewRelease& operator=(const NewRelease&) = delete;

    fs::path path;
    bool kept = false;
};

}  // namespace

Product::Product(fs::path directoryPath, bool create) : targetDir(std::move(directoryPath)) {
    if (!targetDir.is_absolute()) {
        throw std::runtime_error("The target directory '" + targetDir.string() +
                                 "' is not an absolute path.");
    }
    if (create)
        fs::create_directories(targetDir);
    lock();
}

Product::~Product() {
    std::error_code ignored;
    if (fs::is_empty(targetDir, ignored))
        fs::remove(targetDir, ignored);
    if (directory >= 0)
        close(directory);
}

void Product::lock() {
    directory = open(targetDir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (directory < 0) {
        throw std::runtime_error(std::string(productName) + " is not installed in '" + targetDir.string() +
                                 "'.");
    }
    if (flock(directory, LOCK_EX | LOCK_NB) != 0) {
        close(directory);
        throw std::runtime_error("Another installation is running in '" + targetDir.string() + "'.");
    }
}

void Product::replace(const std::string& agent, const std::string& configuration,
                      const std::string& version) {
    const auto old = currentRelease(targetDir);
    NewRelease release(targetDir);
    writeFile(release.path / "agent.txt", agent);
    writeFile(release.path / "agent.conf", configuration);
    writeFile(release.path / recordFile,
              "product=" + std::string(productName) + "\nversion=" + version + "\n");

    fs::remove(targetDir / newLink);
    fs::create_directory_symlink(release.path.filename(), targetDir / newLink);
    fs::rename(targetDir / newLink, targetDir / currentLink);
    release.kept = true;
    if (old)
        removeRelease(*old);
}

void Product::remove() {
    const auto release = currentRelease(targetDir);
    if (!release || !installedVersion(targetDir)) {
        throw std::runtime_error("'" + targetDir.string() + "' does not hold " + std::string(productName) +
                                 ", so nothing was removed.");
    }
    fs::remove(targetDir / currentLink);
    removeRelease(*release);
}

std::optional<std::string> installedVersion(const fs::path& targetDir) {
    const auto release = currentRelease(targetDir);
    if (!release)
        return std::nullopt;
    std::ifstream record(*release / recordFile);
    std::optional<std::string> version;
    bool ours = false;
    for (std::string line; std::getline(record, line);) {
        ours = ours || line == "product=" + std::string(productName);
        if (line.starts_with("version="))
            version = line.substr(line.find('=') + 1);
    }
    return ours ? version : std::nullopt;
}
