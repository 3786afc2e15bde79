#include "WindowTest.h"

#include <fstream>

namespace vok::test {

namespace {

struct Configuration {
    const char* name;
    std::optional<std::string> content;
    friend void PrintTo(const Configuration& row, std::ostream* out) { *out << row.name; }
};

class ConfigurationTest : public WindowTest, public testing::WithParamInterface<Configuration> {};

TEST_P(ConfigurationTest, IsMissedInASheetAndTheProgramStays) {
    const auto file = tools / "installer_config.plist";
    std::filesystem::remove(file);
    if (GetParam().content)
        std::ofstream(file) << *GetParam().content;
    start();
    awaitSheet("Initialization failed.\nFailed to load app config from the '" + file.string() + "' file.");
    awaitActiveWindow("Error");
    pressSheetButton();
    awaitNoSheet();
    EXPECT_TRUE(installer->isRunning());
    closeWindow();
}

INSTANTIATE_TEST_SUITE_P(Contents, ConfigurationTest,
                         testing::Values(Configuration{"Missing", {}}, Configuration{"Garbage", "garbage"},
                                         Configuration{"Array", "<plist><array/></plist>"}),
                         [](const auto& test) { return test.param.name; });

TEST_F(WindowTest, AMissingSplashPageCanBeTriedAgain) {
    std::filesystem::rename(tools / "splash.html", tools / "kept.html");
    server.open();
    start();
    awaitLog("Failed to load 'file://");
    std::filesystem::rename(tools / "kept.html", tools / "splash.html");
    server.expect(firstPage());
    tryAgain();
}

TEST_F(WindowTest, AFirstPageOutOfReachCanBeTriedAgain) {
    start();
    awaitLog("Failed to load '" + server.url("/first"));
    server.expect(firstPage(), pageGoingTo("/last"));
    server.expect("/last");
    server.open();
    tryAgain("F5");
}

/// An answer that is no page.
class FailedLoadTest : public WindowTest, public testing::WithParamInterface<Answer> {};

TEST_P(FailedLoadTest, OfACommandRunsNothingUntilItIsTriedAgain) {
    const auto state = command("getstate", "/back");
    startWithFirstPage(state);
    server.expect(state, GetParam());
    awaitRequests();
    awaitLog("Failed to load '" + server.url(state));
    EXPECT_EQ(calls("install tool"), Texts());
    server.expect(state);
    server.expect("/back?" + report("getstate", "productState=NotInstalled"), pageGoingTo("/last"));
    server.expect("/last");
    tryAgain();
    EXPECT_EQ(calls("install tool").size(), 1u);
    closeWindow();
}

TEST_P(FailedLoadTest, OfACallbackDoesNotRunTheCommandAgain) {
    const auto callback = "/back?" + report("getstate", "productState=NotInstalled");
    startWithFirstPage(command("getstate", "/back"));
    server.expect(command("getstate", "/back"));
    server.expect(callback, GetParam());
    awaitRequests();
    awaitLog("Failed to load '" + server.url("/back"));
    server.expect(callback, pageGoingTo("/last"));
    server.expect("/last");
    tryAgain();
    EXPECT_EQ(calls("install tool").size(), 1u);
    closeWindow();
}

INSTANTIATE_TEST_SUITE_P(Answers, FailedLoadTest,
                         testing::Values(Answer{"", ""}, Answer{"file", "application/x-file"}),
                         [](const auto& test) { return test.param.type.empty() ? "HangingUp" : "File"; });

constexpr auto largeSplashPage = "<!doctype html><script>kept = new Uint8Array(3e8).fill(1)</script>";

TEST_F(WindowTest, AProcessLostBeforeItHasAPageIsNotMissed) {
    std::ofstream(tools / "splash.html")
        << largeSplashPage << "<script>document.write('<img src=" << server.url("/image") << ">')</script>";
    server.expect("/image", {.before = [this] { killSmallestWebProcess(); }});
    startWithFirstPage("/last");
    server.expect("/last");
    awaitRequests();
    EXPECT_EQ(log().find("process has ended"), std::string::npos);
}

/// A process that dies while the first page is on its way: that of the splash page, or that of the first
/// page.
class LostStartTest : public WindowTest, public testing::WithParamInterface<bool> {};

TEST_P(LostStartTest, LeadsToTheFirstPageOnceMore) {
    std::ofstream(tools / "splash.html") << largeSplashPage;
    server.expect(firstPage(), {.before = [this] {
                      GetParam() ? killLargestWebProcess() : killSmallestWebProcess();
                      awaitLog("The web content process has ended.");
                  }});
    startWithFirstPage("/last");
    server.expect("/last");
    awaitRequests();
}

INSTANTIATE_TEST_SUITE_P(Pages, LostStartTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Splash" : "First"; });

TEST_F(WindowTest, ALostPageLeadsBackToTheFirstPage) {
    startWithFirstPage("/ordinary");
    server.expect("/ordinary", largePage());
    server.expect("/large");
    awaitRequests();
    awaitLog(server.url("/ordinary"));
    server.expect(firstPage(), pageGoingTo("/last"));
    server.expect("/last");
    killLargestWebProcess();
    awaitRequests();
    closeWindow();
}

TEST_F(WindowTest, ALostCommandPageDoesNotRunItsCommandAgain) {
    const auto uninstall = command("uninstall&reportUrl=r");
    startWithFirstPage(uninstall);
    server.expect(uninstall, largePage());
    server.expect("/large");
    awaitRequests();
    EXPECT_EQ(calls("admin tool", 1).size(), 1u);
    server.expect(firstPage(), pageGoingTo("/last"));
    server.expect("/last");
    killLargestWebProcess();
    awaitRequests();
    EXPECT_EQ(calls("admin tool").size(), 1u);
}

}  // namespace

}  // namespace vok::test
