#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// The product in its target directory:
///
///     <targetDir>/current               symbolic link to the release in use
///     <targetDir>/release-<stamp>/      agent.txt, agent.conf, product.record
///
/// A release is written completely beside the one in use and replaces it by renaming one link, so the
/// directory always has the whole old product or the whole new one. Other files in the target directory are
/// not touched.
///
/// The object locks the target directory for its lifetime; a second one raises. Operations raise
/// std::runtime_error or std::filesystem::filesystem_error and then leave the product unchanged.
class Product {
public:
    /// Locks the directory. With `create` it is created if it is missing, and removed on destruction if it is
    /// empty.
    Product(std::filesystem::path targetDir, bool create);
    ~Product();
    Product(const Product&) = delete;
    Product& operator=(const Product&) = delete;

    /// Installs a release with these contents and removes the previous one.
    void replace(const std::string& agent, const std::string& configuration, const std::string& version);

    /// Removes what `replace` wrote, and the target directory if it is then empty. Raises when this product
    /// is not in the directory.
    void remove();

private:
    void lock();

    std::filesystem::path targetDir;
    int directory = -1;  ///< descriptor that holds the lock
};

/// Version of the product installed in the directory; nothing when there is none or it is not this product.
std::optional<std::string> installedVersion(const std::filesystem::path& targetDir);
