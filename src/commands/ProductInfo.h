#pragma once

#include <cstdint>
#include <string>

namespace vok {

/// Asks the install tool for the installed product: runs it through /bin/bash with
/// command=print_installed_product_info, keeps its product info line and reads `installed` and `version` from
/// the JSON record in it. Blocks until tool and filter have ended. All strings are UTF-8.
///
/// Returns 0 when the record was read, the exit status of the shell pipeline when that is not 0 (1: no
/// product info line), and -1 on every other failure; logs each failure and raises nothing. `*installed`
/// (non-zero: installed) is written only when 0 is returned. The version with its terminating zero goes to
/// `installedVersion`, unless that is null or its size 0, or the record has no `installed`; one that does not
/// fit is a failure. An installed product without a version has the version "unknown".
std::int32_t GetInstalledProductInfo(const char* installToolPath, const char* agentId, const char* targetDir,
                                     std::int32_t* installed, char* installedVersion,
                                     std::uint32_t installedVersionBufSize) noexcept;

/// Reads the record in `output`, the product info line as the pipeline printed it.
/// Returns 0 or -1, and raises a std::exception when a member is of a type that cannot be converted.
std::int32_t ReadProductInfo(const std::string& output, std::int32_t* installed, char* installedVersion,
                             std::uint32_t installedVersionBufSize);

}  // namespace vok
