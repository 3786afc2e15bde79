#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// The product in its target directory:
///
///     <targetDir>/current               symbolic link to the release in use
///     <targetDir>/release-<stamp>/      agent.txt, agent.conf, product.record
///
/// A release is written completely beside the one in use and takes its place by the renaming of one link, so
/// at every moment the directory holds the whole old product or the whole new one. What else lies in the
/// target directory is left alone.
///
/// The object locks the target directory for its life; a second one raises. Operations raise
/// std::runtime_error (std::filesystem::filesystem_error included) and leave the product as it was.
class Product {
public:
    /// Locks the directory. With `create` it is made when it is missing, and removed again at the end when
    /// nothing was put into it.
    Product(std::filesystem::path targetDir, bool create);
    ~Product();
    Product(const Product&) = delete;
    Product& operator=(const Product&) = delete;

    /// Puts a release with these contents into use and removes the one before.
    void replace(const std::string& agent, const std::string& configuration, const std::string& version);

    /// Removes what `replace` wrote, and the target directory when it is then empty. Raises when the
    /// directory does not hold this product.
    void remove();

private:
    void lock();

    std::filesystem::path targetDir;
    int directory = -1;  ///< descriptor that holds the lock
};

/// Version of the product installed in the directory; nothing when there is none or it is not this product.
std::optional<std::string> installedVersion(const std::filesystem::path& targetDir);
