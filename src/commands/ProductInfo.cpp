#include "commands/ProductInfo.h"

#include "foundation/Log.h"

#include <Poco/Pipe.h>
#include <Poco/PipeStream.h>
#include <Poco/Process.h>
#include <Poco/StreamCopier.h>
#include <json/json.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <sys/resource.h>

namespace vok {

namespace {

constexpr std::string_view infoPrefix = "Install info {";
constexpr std::string_view infoSuffix = "}";
constexpr std::string_view outputFilter = R"(Install info \{.*\}$)";
constexpr auto queryFormat =
    " '%@' 'command=print_installed_product_info' 'agentId=%@' 'targetDir=%@' 'print_info_prefix=%@{' "
    "'print_info_suffix=%@' | egrep \"%@\"";
constexpr std::int32_t failure = -1;

/// Lowers the limit of open files to the default of macOS, for processes started in its lifetime, which may
/// raise it. Poco's child closes every descriptor up to the limit, which is slow.
class LoweredFileLimit {
public:
    LoweredFileLimit() {
        getrlimit(RLIMIT_NOFILE, &before);
        const rlimit lowered{std::min<rlim_t>(before.rlim_cur, 256), before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &lowered);
    }
    ~LoweredFileLimit() { setrlimit(RLIMIT_NOFILE, &before); }
    LoweredFileLimit(const LoweredFileLimit&) = delete;
    LoweredFileLimit& operator=(const LoweredFileLimit&) = delete;

private:
    rlimit before{RLIM_INFINITY, RLIM_INFINITY};
};

Poco::ProcessHandle launchBash(const std::string& command, Poco::Pipe& output) {
    const LoweredFileLimit limit;
    return Poco::Process::launch("/bin/bash", {"-c", command}, nullptr, &output, nullptr);
}

/// Runs `command` in bash, appends its output to `output` and returns its exit status. The output is read
/// to its end before the child is waited for.
int runCommand(const std::string& command, std::string& output) {
    Poco::Pipe pipe;
    Poco::PipeInputStream stream(pipe);
    const auto child = launchBash(command, pipe);
    Poco::StreamCopier::copyToString(stream, output);
    return Poco::Process::wait(child);
}

/// Parses the first value in `text`; what follows it is ignored. Nothing when there is none.
std::optional<Json::Value> parseRecord(const std::string& text) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"  // its successor rejects text after the value
    Json::Reader reader;
#pragma GCC diagnostic pop
    Json::Value root;
    if (!reader.parse(text, root, false))
        return std::nullopt;
    return root;
}

}  // namespace

std::int32_t ReadProductInfo(const std::string& output, std::int32_t* installed, char* installedVersion,
                             std::uint32_t installedVersionBufSize) {
    const auto marker = output.find(infoPrefix);
    if (marker == std::string::npos) {
        Log("GetInstalledProductInfo: infoPrefix is not found.");
        return failure;
    }
    const auto text = output.substr(marker + infoPrefix.size());
    const auto root = parseRecord(text);
    if (!root) {
        Log("GetInstalledProductInfo: Failed to parse json ('%s').", text);
        return failure;
    }
    if (!root->isMember("installed")) {
        *installed = 0;
        return 0;
    }
    const std::int32_t flag = (*root)["installed"].asInt();
    if (installedVersion && installedVersionBufSize > 0) {
        const auto version = root->isMember("version") ? (*root)["version"].asString() : "unknown";
        if (version.size() >= installedVersionBufSize) {
            Log("GetInstalledProductInfo: installedVersionBufSize is too small.");
            return failure;
        }
        std::memcpy(installedVersion, version.c_str(), version.size() + 1);
    }
    *installed = flag;
    return 0;
}

std::int32_t GetInstalledProductInfo(const char* installToolPath, const char* agentId, const char* targetDir,
                                     std::int32_t* installed, char* installedVersion,
                                     std::uint32_t installedVersionBufSize) noexcept {
    if (!installToolPath || !agentId || !targetDir || !installed) {
        Log("GetInstalledProductInfo: Invalid argument.");
        return failure;
    }
    try {
        std::string output;
        const auto query = StringWithFormat(queryFormat, installToolPath, agentId, targetDir, infoPrefix,
                                            infoSuffix, outputFilter);
        const int code = runCommand(query, output);
        if (code != 0) {
            Log("GetInstalledProductInfo: Command failed (code = %d).", code);
            return code;
        }
        return ReadProductInfo(output, installed, installedVersion, installedVersionBufSize);
    } catch (const std::exception& exception) {
        Log("GetInstalledProductInfo: Exception: %s", exception.what());
    } catch (...) {
        Log("GetInstalledProductInfo: Unknown exception.");
    }
    return failure;
}

}  // namespace vok
