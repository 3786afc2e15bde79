#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace vok::test {

using Texts = std::vector<std::string>;

/// A copy at `path` of the recording tool, whose calls can be looked at afterwards.
struct RecordingTool {
    explicit RecordingTool(std::string file) : path(std::move(file)) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::filesystem::copy_file(RECORDING_TOOL, path);
    }

    void prints(const std::string& output) const { std::ofstream(path + ".output") << output; }
    bool hasRun() const { return std::filesystem::exists(path + ".arguments"); }

    /// What the tool was started with, its own path first; waits for a call and forgets it. Nothing when none
    /// comes for much longer than a start takes.
    Texts takeArguments() const {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!hasRun() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        auto arguments = read(".arguments");
        std::filesystem::remove(path + ".arguments");
        return arguments;
    }

    /// The zero-terminated strings that the tool left under `ending`.
    Texts read(const char* ending) const {
        Texts texts;
        std::ifstream stream(path + ending);
        for (std::string text; std::getline(stream, text, '\0');)
            texts.push_back(text);
        return texts;
    }

    const std::string path;
};

}  // namespace vok::test
