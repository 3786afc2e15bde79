#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// The file that a decoded URL path names below the directory. Nothing for a path that leads out of it (by
/// ".." or by a symbolic link), for a hidden file, and for what is not a regular file.
std::optional<std::filesystem::path> FindFile(const std::filesystem::path& directory,
                                              const std::string& urlPath);

/// The whole file. Raises std::runtime_error when it cannot be read.
std::string ReadFile(const std::filesystem::path& file);

/// Media type by the file's extension; plain text for every other one.
std::string_view MediaType(const std::filesystem::path& file);
