#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// The file below the directory at a decoded URL path. Nothing for a path that leads out of it (by
/// ".." or by a symbolic link), for a hidden file, and for what is not a regular file.
std::optional<std::filesystem::path> findFile(const std::filesystem::path& directory,
                                              const std::string& urlPath);

/// The whole file. Raises std::runtime_error when it cannot be read.
std::string readFile(const std::filesystem::path& file);

/// An HTML file with each line <!--#include virtual="/NAME" --> replaced by the file of that name beside it,
/// as other web servers do. Raises std::runtime_error when one of them cannot be read.
std::string readPage(const std::filesystem::path& file);

/// Media type by the file's extension; plain text for every other one.
std::string_view mediaType(const std::filesystem::path& file);
