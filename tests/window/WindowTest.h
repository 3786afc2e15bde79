#pragma once

#include "PageServer.h"

#include <Poco/Process.h>
#include <Poco/TemporaryFile.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <thread>
#include <vector>

namespace vok::test {

using Texts = std::vector<std::string>;

/// Looks every few milliseconds whether `condition` holds; false when it does not within `limit`.
template <class Condition>
bool eventually(Condition condition, std::chrono::seconds limit = std::chrono::seconds(15)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

/// The running program; it and all its children end with this object.
class Installer {
public:
    /// The program's standard error is appended to `log`.
    Installer(const Texts& commandLine, const std::string& log);
    ~Installer();

    Poco::Process::PID pid() const { return process.id(); }
    bool isRunning() { return status < 0 && (status = process.tryWait()) < 0; }
    /// Waits for the end; nothing when the program goes on. Of a program that was killed, the status is no
    /// exit status.
    std::optional<int> exitStatus();

private:
    Poco::ProcessHandle process;
    int status = -1;
};

/// A bundle with recording tools, a server for its pages, and a default browser that records, too.
class WindowTest : public testing::Test {
protected:
    WindowTest();
    ~WindowTest() override;

    /// Starts the program; `program` may be a link to it.
    void start(const Texts& arguments = {}, const std::string& program = "");
    /// Opens the server and starts the program; the first page goes on to `path` by itself.
    void startWithFirstPage(const std::string& path);

    /// Waits until all expected requests have come, or the program has ended.
    void awaitRequests();
    void awaitLog(const std::string& text);
    /// Waits for a sheet with `message`, and for nothing beside it.
    void awaitSheet(const std::string& message);
    /// Waits for a sheet with `texts`, "|" after each.
    void awaitSheetTexts(const std::string& texts);
    void awaitNoSheet();
    void pressSheetButton();
    /// Waits until the window is Normal or Iconic.
    void awaitWindow(const std::string& state);
    /// Closes the window in the way of the window manager; the program has to end well.
    void closeWindow();
    void awaitActiveWindow(const std::string& name);
    static void pressKey(const std::string& key);
    /// Chooses "Try again" by `key` as soon as it is there and waits until all expected requests have come.
    void tryAgain(const std::string& key = "Return");
    /// Kills the process with the most memory among those that draw pages, which is that of a `largePage`.
    void killLargestWebProcess();
    /// Kills the one with the least memory, when a second one has started.
    void killSmallestWebProcess();
    /// Lets logind run `code`, in Python, when it is asked for a restart.
    void setRestart(const std::string& code);

    /// The command URL's path with `query`, reporting to the path `callback`.
    std::string command(const std::string& query, const std::string& callback = "") const;
    /// What a report of `action` adds to the callback URL.
    static std::string report(const std::string& action, const std::string& result = "");
    /// The first page's path with all that the program says.
    static std::string firstPage();
    /// A page that goes on to `path` once it has loaded.
    static Answer pageGoingTo(const std::string& path);
    /// A page that takes more memory than any other, and then asks for "/large".
    static Answer largePage();

    /// The calls of a recording tool, each as "[argument][argument]...", once there are `count` of them.
    Texts calls(const std::string& tool, std::size_t count = 0) const;
    std::string log() const;

    /// Process numbers of those that draw pages, the one with the least memory first.
    Texts webProcesses() const;

    Poco::TemporaryFile sandbox;
    const std::filesystem::path contents;
    const std::filesystem::path tools;
    PageServer server;
    std::map<std::string, std::string> variables;  ///< of the program's environment
    std::optional<Installer> installer;
};

}  // namespace vok::test
