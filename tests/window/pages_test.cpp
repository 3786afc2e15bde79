#include "WindowTest.h"

#include <fstream>

namespace vok::test {

namespace {

/// A way to start the program; none changes what it does.
struct Start {
    const char* name;
    Texts arguments = {};
    bool throughLink = false;
    std::map<std::string, std::string> variables = {};

    friend void PrintTo(const Start& start, std::ostream* out) { *out << start.name; }
};

constexpr auto noBus = "unix:path=/nonexistent";

class StartTest : public WindowTest, public testing::WithParamInterface<Start> {};

TEST_P(StartTest, LeadsFromTheSplashPageToTheFirstPage) {
    const auto& [name, arguments, throughLink, extraVariables] = GetParam();
    for (const auto& [variable, value] : extraVariables)
        variables[variable] = value;
    const auto link = sandbox.path() + "/link";
    std::filesystem::create_symlink(contents / "MacOS" / "vok-installer", link);
    server.open();
    server.expect(firstPage(), pageGoingTo("/last"));
    server.expect("/last");
    start(arguments, throughLink ? link : "");
    awaitRequests();
    closeWindow();
}

INSTANTIATE_TEST_SUITE_P(
    Ways, StartTest,
    testing::Values(Start{"Plain", {}}, Start{"ThroughALink", {}, true},
                    Start{"WithArguments", {"--help", "--gapplication-service", "http://127.0.0.1/", "file"}},
                    Start{"WithoutBuses",
                          {},
                          false,
                          {{"DBUS_SESSION_BUS_ADDRESS", noBus}, {"DBUS_SYSTEM_BUS_ADDRESS", noBus}}}),
    [](const auto& test) { return test.param.name; });

TEST_F(WindowTest, ASecondStartBringsTheWindowForwardAndEnds) {
    startWithFirstPage(command("hide", "/back"));
    server.expect(command("hide", "/back"));
    server.expect("/back?" + report("hide"));
    awaitRequests();
    awaitWindow("Iconic");
    Installer second({contents / "MacOS" / "vok-installer"}, sandbox.path() + "/log");
    EXPECT_EQ(second.exitStatus(), 0);
    awaitWindow("Normal");
    EXPECT_TRUE(installer->isRunning());
}

TEST_F(WindowTest, AnotherProductOpensAWindowOfItsOwn) {
    startWithFirstPage("/last");
    server.expect("/last");
    awaitRequests();
    std::ofstream(contents / "Info.plist")
        << "<plist version='1.0'><dict><key>CFBundleVersion</key><string>1.2.3</string>"
           "<key>CFBundleIdentifier</key><string>org.example.Other</string></dict></plist>";
    server.expect(firstPage());
    Installer other(
        {"/usr/bin/env", "LC_ALL=C.UTF-8", "LANGUAGE=en_GB", (contents / "MacOS" / "vok-installer").string()},
        sandbox.path() + "/log");
    awaitRequests();
}

TEST_F(WindowTest, NewWindowsOpenInTheDefaultBrowserAndThePageStays) {
    server.expect(firstPage(), {"<!doctype html><a target=_blank href='/linked?a=b&amp;c'>Link</a><script>"
                                "onload = () => { document.querySelector('a').click(); "
                                "fetch('/linked').then(() => { open('/opened'); return fetch('/opened') })"
                                ".then(() => location = '/next') }</script>"});
    const auto browsed = [this](std::size_t count) { return [=, this] { calls("browser", count); }; };
    server.expect("/linked", {.before = browsed(1)});
    server.expect("/opened", {.before = browsed(2)});
    server.expect("/next");
    server.open();
    start();
    awaitRequests();
    EXPECT_EQ(calls("browser"),
              (Texts{"[" + server.url("/linked?a=b&c") + "]", "[" + server.url("/opened") + "]"}));
    closeWindow();
}

/// How a person answers a page's question.
class QuestionTest : public WindowTest, public testing::WithParamInterface<Texts> {};

TEST_P(QuestionTest, IsASheetWhoseAnswerReachesThePage) {
    server.expect(firstPage(), {"<!doctype html><script>onload = () => setTimeout(() => "
                                "location = '/' + confirm('Are you <b>sure</b>?'))</script>"});
    server.expect(GetParam()[1]);
    server.open();
    start();
    awaitSheetTexts("Vok Prüfung|Are you <b>sure</b>?|Cancel|OK|");
    pressKey(GetParam()[0]);
    awaitRequests();
}

INSTANTIATE_TEST_SUITE_P(Keys, QuestionTest,
                         testing::Values(Texts{"Return", "/true"}, Texts{"Escape", "/false"}),
                         [](const auto& test) { return test.param[0]; });

TEST_F(WindowTest, TheFirstPageMayLeadToACommandByItself) {
    const auto state = command("getstate", "/back");
    server.expect(firstPage(), {.redirect = state});
    server.expect(state);
    server.expect("/back?" + report("getstate", "productState=NotInstalled"));
    server.open();
    start();
    awaitRequests();
    EXPECT_EQ(calls("install tool").size(), 1u);
}

TEST_F(WindowTest, ACommandInASubFrameRunsNothing) {
    server.expect(firstPage(), {"<!doctype html><iframe src='" + command("getstate", "/wrong") +
                                "'></iframe><script>onload = () => location = '" +
                                command("GETSTATE", "/back") + "'</script>"});
    server.expect(command("getstate", "/wrong"));
    server.expect(command("GETSTATE", "/back"));
    server.expect("/back?" + report("GETSTATE", "productState=NotInstalled"));
    server.open();
    start();
    awaitRequests();
    EXPECT_EQ(calls("install tool").size(), 1u);
}

}  // namespace

}  // namespace vok::test
