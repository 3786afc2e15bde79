#include "support/InstallerTest.h"

namespace vok::test {

const std::string tools = "/Apps/Vok Test.app/Contents/MacOS/Tools";
const std::string splash = "file:///Apps/Vok%20Test.app/Contents/MacOS/Tools/splash.html";

using StartUpTest = InstallerTest;

TEST_F(StartUpTest, PreparesTheWebViewAndShowsTheSplashPage) {
    desktop.propertyLists[tools + "/installer_config.plist"] = config;
    installer.applicationDidFinishLaunching();
    EXPECT_EQ(desktop.takeEvents(),
              (Events{"language en-GB", "close with window", "update off screen", "load " + splash}));
    EXPECT_EQ(takeLog(), Events{"Natigating to splash page (url = '" + splash + "')..."});
    EXPECT_EQ(desktop.frameLoadDelegate, &installer);
    EXPECT_EQ(desktop.policyDelegate, &installer);
    EXPECT_EQ(desktop.uiDelegate, &installer);
    const auto first = pid();
    EXPECT_EQ(first.find_first_not_of("0123456789ABCDEF-"), first.npos);
    start();
    EXPECT_NE(pid(), first);
}

TEST_F(StartUpTest, OnlyYesEnablesTheDeveloperTools) {
    for (const std::string value : {"yes", "no", "Yes", ""}) {
        config["developerMode"] = value;
        EXPECT_EQ(start().at(1) == "developer tools", value == "yes") << value;
    }
}

TEST_F(StartUpTest, MissingConfigurationEndsInASheet) {
    installer.applicationDidFinishLaunching();
    EXPECT_EQ(desktop.events,
              Events{errorSheet("Initialization failed.\nFailed to load app config from the '" + tools +
                                "/installer_config.plist' file.")});
    EXPECT_EQ(takeLog(), Events{});
    EXPECT_EQ(desktop.frameLoadDelegate, nullptr);
    EXPECT_TRUE(installer.applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(StartUpTest, OtherExceptionsPassThrough) {
    config.erase("lang");
    desktop.languages = []() -> Languages { throw std::runtime_error("broken"); };
    EXPECT_THROW(start(), std::runtime_error);
    EXPECT_EQ(desktop.events, Events{});
}

TEST_F(StartUpTest, KnowsCommandURLsOnceItIsConfigured) {
    EXPECT_FALSE(installer.webViewIsCommandURL("https://pages.test/command?command=install"));
    start();
    EXPECT_TRUE(installer.webViewIsCommandURL("https://pages.test/command?command=install"));
    EXPECT_FALSE(installer.webViewIsCommandURL("https://pages.test/first?to=https://pages.test/command"));
    config.erase("commandUrlPrefix");
    start();
    EXPECT_FALSE(installer.webViewIsCommandURL("https://pages.test/command?command=install"));
}

TEST_F(StartUpTest, PageHostsWithoutANameAreToldInASheet) {
    config["pageHosts"] = "  ";
    EXPECT_EQ(start().back(), errorSheet("Initialization failed.\nThe value of 'pageHosts' names no host."));
}

TEST_F(StartUpTest, ShowsThePagesOfThePageHostsAlone) {
    start();
    EXPECT_TRUE(installer.webViewMayShowPage("https://other.test/"));
    config["pageHosts"] = " pages.test  Local.test:8017 [::1]:8017 ";
    start();
    for (const std::string url :
         {"https://pages.test", "HTTPS://Pages.test:443/a", "http://pages.test:80?a",
          "https://ann:x@pages.test#a", "https://ann@x@pages.test/", "http://local.test:8017/",
          "http://[::1]:8017/", "about:blank", "file:///a", "data:text/html,a", "blob:https://other.test/a"})
        EXPECT_TRUE(installer.webViewMayShowPage(url)) << url;
    for (const std::string url :
         {"https://other.test/", "https://pages.test:80/", "http://pages.test:443/",
          "https://pages.test.other.test/", "https://sub.pages.test/", "https://pages.test@other.test/",
          "https://other.test/@pages.test", "https://other.test\\@pages.test/",
          "https://other.test?@pages.test", "http://local.test/", "https://"})
        EXPECT_FALSE(installer.webViewMayShowPage(url)) << url;
}

struct PageFlowTest : InstallerTest {
    void SetUp() override { start(); }

    Events decide(const std::string& url) {
        installer.webViewDecidePolicyForNavigationAction(desktop, url, desktop);
        return desktop.takeEvents();
    }
    Events ensureNavigatedTo(const std::string& url) {
        installer.ensureNavigatedTo(url);
        return desktop.takeEvents();
    }
    Events loseWebProcess() {
        installer.webViewWebContentProcessDidTerminate(desktop);
        return desktop.takeEvents();
    }

    const std::string firstPage =
        "load https://pages.test/first?agentId=AGENT&version=1.2.3"
        "&os=Mac%2520OS%2520Test%2520OS%252012%2520(100%2525)&lang=en-GB&src=a%20b&utm=1";
};

TEST_F(PageFlowTest, FirstPageFollowsTheSplashPage) {
    EXPECT_EQ(finishLoad(splash), Events{firstPage});
    EXPECT_EQ(takeLog(), (Events{"frameUrl = " + splash,
                                 "Navigated to splash page. Begin navigating to installation page..."}));
    desktop.identities = LocalIdentitiesFailure{LocalIdentitiesFailure::Step::query, {}};
    EXPECT_EQ(finishLoad(splash + "#again"), Events{firstPage});
    desktop.identities = std::vector<LocalIdentity>{
        {true, false, "B2", "Jörg 50%", {}}, {true, false, "A1", "Ann", {}}, {false, false, "C3", "Off", {}}};
    EXPECT_EQ(finishLoad(splash), Events{firstPage + "&account%5BB2%5D=J%C3%B6rg%2050%25"});
    config.erase("lang");
    start();
    EXPECT_NE(finishLoad(splash).at(0).find("&lang=en&"), std::string::npos);
}

TEST_F(PageFlowTest, MissingPartsOfTheFirstPageLeaveTheCallback) {
    for (const std::string key : {"CFBundleVersion", "analyticParams", "firstInstallationPageUrl"}) {
        config.erase(key);
        desktop.info.erase(key);
        start();
        EXPECT_EQ(failureOf([&] { finishLoad(splash); }), "generic: " + missing(key));
        EXPECT_EQ(desktop.events, Events{});
    }
}

TEST_F(PageFlowTest, OnlyCommandUrlsOfTheMainFrameRun) {
    const Events noQuery = {commandFailed("Invalid argument (urlQuery is nil).")};
    EXPECT_EQ(finishLoad("https://pages.test/command"), noQuery);
    EXPECT_EQ(finishLoad("https://pages.test/commands#?command=hide"), noQuery);
    EXPECT_EQ(finishLoad("https://pages.test/Command?command=hide"), Events{});
    EXPECT_EQ(finishLoad("https://pages.test/?https://pages.test/command?command=hide"), Events{});

    FakePlatform frame;
    frame.currentURL = desktop.currentURL = "https://pages.test/command?command=hide";
    installer.webViewDidStartProvisionalLoadForFrame(desktop, desktop);
    installer.webViewDidFinishLoadForFrame(desktop, frame);
    EXPECT_EQ(desktop.events, Events{});
}

TEST_F(PageFlowTest, SplashPageIsRecognisedBeforeCommands) {
    config["commandUrlPrefix"] = "file:";
    start();
    EXPECT_EQ(finishLoad(splash), Events{firstPage});
    EXPECT_EQ(finishLoad("file:///x"), Events{commandFailed("Invalid argument (urlQuery is nil).")});
    config.erase("commandUrlPrefix");
    start();
    EXPECT_EQ(finishLoad(splash), Events{firstPage});
    EXPECT_EQ(failureOf([&] { finishLoad("https://x.test"); }), "generic: " + missing("commandUrlPrefix"));
}

TEST_F(PageFlowTest, LoadsAnotherPageOnlyWhenOneIsShown) {
    desktop.urls["https://A.test"] = {"https://a.test/", {}};
    EXPECT_EQ(ensureNavigatedTo("https://A.test"), Events{});
    desktop.currentURL = "https://a.test/";
    EXPECT_EQ(ensureNavigatedTo("https://A.test"), Events{});
    desktop.currentURL = "https://A.test";
    EXPECT_EQ(ensureNavigatedTo("https://A.test"), Events{"load https://a.test/"});
}

TEST_F(PageFlowTest, NextNavigationAfterANewWindowGoesToTheBrowser) {
    EXPECT_EQ(decide("https://a.test/1"), Events{"use"});
    EXPECT_EQ(&installer.webViewCreateWebViewWithRequest(desktop, "https://a.test/2"), &desktop);
    EXPECT_EQ(decide("https://a.test/3"), (Events{"browse https://a.test/3", "ignore"}));
    EXPECT_EQ(decide("https://a.test/4"), Events{"use"});
    installer.webViewCreateWebViewWithRequest(desktop, "https://a.test/5");
    loseWebProcess();
    EXPECT_EQ(decide(splash), Events{"use"});
}

TEST_F(PageFlowTest, LostWebProcessLeadsBackToTheSplashPageButNotForEver) {
    for (int loss = 1; loss < 3; ++loss) {
        EXPECT_EQ(loseWebProcess(), Events{"load " + splash});
        finishLoad(splash);
        finishLoad("https://pages.test/first");
    }
    EXPECT_EQ(loseWebProcess(),
              Events{errorSheet("The page cannot be displayed.\nClose the installer and start it again.")});
}

}  // namespace vok::test
