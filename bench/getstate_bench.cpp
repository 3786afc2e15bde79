// Asking the install tool for the product's state, compared with the same pipeline without the installer.

#include "commands/ProductInfo.h"
#include "foundation/Log.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <iostream>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

void vok::writeLogLine(const std::string& line) noexcept { std::cerr << line << '\n'; }

namespace {

constexpr auto agentId = "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0";
constexpr auto targetDir = "/usr/local/etc/vok-benchmark";

[[noreturn]] void fail(const char* what) {
    std::cerr << what << " failed\n";
    std::exit(1);
}

/// The output of the pipeline, run by bash in the simplest way that POSIX has.
std::string runPipeline(const std::string& command) {
    int ends[2];
    if (pipe(ends) != 0)
        fail("pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    posix_spawn_file_actions_addclose(&actions, ends[1]);
    const std::array<const char*, 4> arguments{"/bin/bash", "-c", command.c_str(), nullptr};
    pid_t child = 0;
    if (posix_spawn(&child, arguments[0], &actions, nullptr, const_cast<char* const*>(arguments.data()),
                    environ) != 0)
        fail("posix_spawn");
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);

    std::string output;
    std::array<char, 4096> part{};
    for (ssize_t count = 0; (count = read(ends[0], part.data(), part.size())) > 0;)
        output.append(part.data(), static_cast<std::size_t>(count));
    close(ends[0]);
    int status = 0;
    if (waitpid(child, &status, 0) != child || status != 0)
        fail("The pipeline");
    return output;
}

void bare(benchmark::State& state) {
    const std::string command =
        std::string("'" INSTALL_TOOL "' 'command=print_installed_product_info' 'agentId=") + agentId +
        "' 'targetDir=" + targetDir + R"(' 'print_info_prefix=Install info {{' 'print_info_suffix=}')" +
        R"( | egrep "Install info \{.*\}$")";
    while (state.KeepRunning())
        benchmark::DoNotOptimize(runPipeline(command));
}

void installer(benchmark::State& state) {
    while (state.KeepRunning()) {
        std::int32_t installed = 0;
        std::array<char, 32> version{};
        if (vok::GetInstalledProductInfo(INSTALL_TOOL, agentId, targetDir, &installed, version.data(),
                                         version.size()) != 0)
            fail("GetInstalledProductInfo");
    }
}

}  // namespace

BENCHMARK(installer)->Name("asking for the product's state|installer")->UseRealTime();
BENCHMARK(bare)->Name("asking for the product's state|posix_spawn")->UseRealTime();
BENCHMARK_MAIN();
