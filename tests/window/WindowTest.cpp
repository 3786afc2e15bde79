#include "WindowTest.h"

#include <glib.h>

#include <csignal>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

namespace vok::test {

namespace {

namespace fs = std::filesystem;

constexpr auto title = "Vok Prüfung";

/// Notes its arguments, one line for each call, and prints what lies beside it.
constexpr auto recordingTool = R"sh(#!/bin/sh
printf '%s\n' "$(printf '[%s]' "$@")" >>"$0.calls"
if [ -e "$0.output" ]; then cat "$0.output"; fi
)sh";

void write(const fs::path& file, const std::string& content) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

std::string propertyList(const std::map<std::string, std::string>& values) {
    std::string list = "<plist version=\"1.0\"><dict>";
    for (const auto& [key, value] : values)
        list += "<key>" + key + "</key><string>" + value + "</string>";
    return list + "</dict></plist>";
}

std::string escaped(const std::string& value, const char* unescaped) {
    const std::unique_ptr<char, decltype(&g_free)> text(g_uri_escape_string(value.c_str(), unescaped, false),
                                                        g_free);
    return text.get();
}

/// What `command` prints.
std::string shell(const std::string& command) {
    const std::shared_ptr<FILE> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    for (int character = 0; (character = std::fgetc(pipe.get())) != EOF;)
        output += static_cast<char>(character);
    return output;
}

/// Returns when the process is gone and its parent knows.
void killAndWait(const std::string& process) {
    const auto number = std::stoi(process);
    kill(number, SIGKILL);
    EXPECT_TRUE(eventually([&] { return kill(number, 0) < 0; }));
}

std::string sheet(const Installer& installer, const std::string& order = "") {
    return shell(SHEET " " + std::to_string(installer.pid()) + " " + order);
}

Poco::ProcessHandle launch(const Texts& commandLine, const std::string& log) {
    Texts words{"/bin/sh", "-c", "exec 2>>\"$0\" \"$@\"", log};
    words.insert(words.end(), commandLine.begin(), commandLine.end());
    return Poco::Process::launch("/usr/bin/setsid", words);
}

}  // namespace

Installer::Installer(const Texts& commandLine, const std::string& log) : process(launch(commandLine, log)) {}

Installer::~Installer() {
    kill(-pid(), SIGKILL);
    if (isRunning())
        process.wait();
}

std::optional<int> Installer::exitStatus() {
    return eventually([this] { return !isRunning(); }) ? std::optional(status) : std::nullopt;
}

WindowTest::WindowTest()
    : contents(fs::path(sandbox.path()) / "Größe и blank" / "Vok Installer.app" / "Contents"),
      tools(contents / "MacOS" / "Tools"), variables{{"HOME", sandbox.path()},
                                                     {"XDG_DATA_HOME", sandbox.path() + "/data"},
                                                     {"XDG_CONFIG_HOME", sandbox.path() + "/config"},
                                                     {"LC_ALL", "C.UTF-8"},
                                                     {"LANGUAGE", "en_GB"}} {
    write(contents / "Info.plist", propertyList({{"CFBundleVersion", "1.2.3"},
                                                 {"CFBundleDisplayName", title},
                                                 {"CFBundleIdentifier", "none"}}));
    write(tools / "installer_config.plist", propertyList({{"agentId", "AGENT"},
                                                          {"targetDir", "/opt/target dir"},
                                                          {"installTool", "install tool"},
                                                          {"launchAsAdminTool", "admin tool"},
                                                          {"firstInstallationPageUrl", server.url("/first")},
                                                          {"analyticParams", "src=a b&amp;utm=ü"},
                                                          {"commandUrlPrefix", server.url("/command")}}));
    write(tools / "splash.html", "<!doctype html><title>Splash</title>");
    fs::copy(PROGRAM, contents / "MacOS");
    for (const auto* tool : {"install tool", "admin tool", "browser"}) {
        write(tools / tool, recordingTool);
        fs::permissions(tools / tool, fs::perms::owner_all);
    }
    write(sandbox.path() + "/data/applications/browser.desktop",
          "[Desktop Entry]\nType=Application\nName=Browser\nExec=\"" + (tools / "browser").string() +
              "\" %u\n");
    write(sandbox.path() + "/config/mimeapps.list",
          "[Default Applications]\nx-scheme-handler/http=browser.desktop\n");
}

WindowTest::~WindowTest() {
    installer.reset();
    EXPECT_EQ(server.faults(), "");
    if (HasFailure())
        std::cout << "The program's log:\n" << log();
}

void WindowTest::start(const Texts& arguments, const std::string& program) {
    Texts commandLine{"/usr/bin/env"};
    for (const auto& [name, value] : variables)
        commandLine.push_back(name + "=" + value);
    commandLine.push_back(program.empty() ? (contents / "MacOS" / "vok-installer").string() : program);
    commandLine.insert(commandLine.end(), arguments.begin(), arguments.end());
    installer.emplace(commandLine, sandbox.path() + "/log");
}

void WindowTest::startWithFirstPage(const std::string& path) {
    server.expect(firstPage(), pageGoingTo(path));
    server.open();
    start();
}

void WindowTest::awaitRequests() {
    EXPECT_TRUE(eventually([this] { return server.missing() == 0 || !installer->isRunning(); }));
}

void WindowTest::awaitLog(const std::string& text) {
    EXPECT_TRUE(eventually([&] { return log().find(text) != std::string::npos; })) << text;
}

void WindowTest::awaitSheet(const std::string& message) { awaitSheetTexts("Error|" + message + "|OK|"); }

void WindowTest::awaitSheetTexts(const std::string& texts) {
    std::string shown;
    eventually([&] { return (shown = sheet(*installer)) == texts; });
    EXPECT_EQ(shown, texts);
}

void WindowTest::awaitNoSheet() {
    EXPECT_TRUE(eventually([this] { return sheet(*installer).empty(); }));
}

void WindowTest::pressSheetButton() { sheet(*installer, "press"); }

void WindowTest::awaitWindow(const std::string& state) {
    const auto id = "$(xdotool search --name '^" + std::string(title) + "$')";
    const auto look = "xprop -id " + id + " WM_STATE 2>/dev/null | grep -o 'state: .*'";
    EXPECT_TRUE(eventually([&] { return shell(look) == "state: " + state + "\n"; })) << state;
}

void WindowTest::closeWindow() {
    eventually([this] {
        pressKey("alt+F4");
        return eventually([this] { return !installer->isRunning(); }, std::chrono::seconds(1));
    });
    EXPECT_EQ(installer->exitStatus(), 0);
}

void WindowTest::awaitActiveWindow(const std::string& name) {
    std::string active;
    eventually(
        [&] { return (active = shell("xdotool getactivewindow getwindowname 2>/dev/null")) == name + "\n"; });
    EXPECT_EQ(active, name + "\n");
}

void WindowTest::pressKey(const std::string& key) { shell("xdotool key " + key); }

void WindowTest::tryAgain(const std::string& key) {
    const auto missing = server.missing();
    EXPECT_TRUE(eventually([&] {
        pressKey(key);
        return eventually([&] { return server.missing() < missing; }, std::chrono::seconds(1));
    }));
    awaitRequests();
}

Texts WindowTest::webProcesses() const {
    // More than 100,000 kB: a process that is killed while it starts takes the program with it.
    constexpr auto started = "$2 > 100000";
    const auto all = "$(pgrep -d, -g " + std::to_string(installer->pid()) + " WebKitWebProces)";
    std::istringstream lines(shell("ps -o pid=,rss= --sort=rss -p " + all + " | awk '" + started + "'"));
    Texts processes;
    for (std::string line; std::getline(lines, line);)
        processes.push_back(line);
    return processes;
}

void WindowTest::killLargestWebProcess() {
    const auto processes = webProcesses();
    ASSERT_FALSE(processes.empty());
    killAndWait(processes.back());
}

void WindowTest::killSmallestWebProcess() {
    Texts processes;
    ASSERT_TRUE(eventually([&] { return (processes = webProcesses()).size() > 1; }));
    killAndWait(processes.front());
}

void WindowTest::setRestart(const std::string& code) {
    shell("gdbus call --system -d org.freedesktop.login1 -o /org/freedesktop/login1 "
          "-m org.freedesktop.DBus.Mock.AddMethod org.freedesktop.login1.Manager Reboot b '' \"" +
          code + "\"");
}

std::string WindowTest::command(const std::string& query, const std::string& callback) const {
    return "/command?command=" + query +
           (callback.empty() ? "" : "&callbackUrl=" + escaped(server.url(callback), ""));
}

std::string WindowTest::report(const std::string& action, const std::string& result) {
    return "pid=PID&agentId=AGENT&action=" + action + "&event=finished&result=success&" + result;
}

std::string WindowTest::firstPage() {
    constexpr auto unescaped = "!*'();/:@&=+$,";
    const std::unique_ptr<char, decltype(&g_free)> system(g_get_os_info(G_OS_INFO_KEY_PRETTY_NAME), g_free);
    const auto os = escaped(escaped("Mac OS " + std::string(system.get()), unescaped), unescaped);
    return "/first?agentId=AGENT&version=1.2.3&os=" + os + "&lang=en-GB&src=a%20b&utm=%C3%BC";
}

Answer WindowTest::pageGoingTo(const std::string& path) {
    return {"<!doctype html><script>onload = () => location = '" + path + "'</script>"};
}

Answer WindowTest::largePage() {
    return {"<!doctype html><script>onload = () => "
            "{ window.kept = new Uint8Array(3e8).fill(1); fetch('/large') }</script>"};
}

Texts WindowTest::calls(const std::string& tool, std::size_t count) const {
    Texts calls;
    eventually([&] {
        calls.clear();
        std::ifstream stream(tools / (tool + ".calls"));
        for (std::string line; std::getline(stream, line);)
            calls.push_back(line);
        return calls.size() >= count;
    });
    return calls;
}

std::string WindowTest::log() const {
    std::ifstream stream(sandbox.path() + "/log");
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace vok::test
