#include "platform/shared/NavigationDecisions.h"
#include "platform/shared/SheetQueue.h"
#include "support/InstallerTest.h"

namespace vok::test {

TEST(SheetQueueTest, ShowsOneSheetAtATimeAndContinuesAfterOneThatCannotBeShown) {
    Events shown;
    takeLog();
    bool isReady = false;
    SheetQueue sheets([&] { return isReady; });
    const auto add = [&](const char* name) {
        sheets.add([&, name] {
            shown.push_back(name);
            isReady = false;
        });
    };
    add("first");
    sheets.add([] { throw std::runtime_error("no sheet"); });
    add("second");
    EXPECT_EQ(shown, Events());
    isReady = true;
    sheets.showNext();
    EXPECT_EQ(shown, Events({"first"}));
    isReady = true;
    sheets.showNext();
    EXPECT_EQ(shown, Events({"first", "second"}));
    EXPECT_EQ(takeLog(), Events({"A callback failed: no sheet"}));
}

struct Policy final : WebPolicyDelegate {
    void webViewDecidePolicyForNavigationAction(WebView&, const std::string&,
                                                WebPolicyDecisionListener& listener) override {
        allows ? listener.use() : listener.ignore();
    }
    bool webViewIsCommandURL(const std::string& url) const override { return url.starts_with("setup:"); }
    bool allows = true;
};

TEST(NavigationDecisionsTest, LeaveToTheDesktopWhatAPageMayNotLoadInTheView) {
    const struct {
        std::string url;
        bool isApplicationLoad;
        bool isFollowed;
        Events events;
    } rows[] = {
        {"HTTPS://h/a", false, true, {}},
        {"mailto:a@h", false, false, {"browse mailto:a@h"}},
        {"mailto:a@h", true, true, {}},
        {"setup:run", false, true, {}},
    };
    FakePlatform desktop;
    Policy policy;
    for (const auto& row : rows) {
        EXPECT_EQ(allowsNavigation(desktop, policy, desktop, row.url, row.isApplicationLoad), row.isFollowed);
        EXPECT_EQ(desktop.takeEvents(), row.events) << row.url;
    }
    policy.allows = false;
    EXPECT_FALSE(allowsNavigation(desktop, policy, desktop, "mailto:a@h", false));
    EXPECT_EQ(desktop.takeEvents(), Events());
}

TEST(NavigationDecisionsTest, LoadTheAddressOfANewWindowOnlyIfThatIsAllowed) {
    FakePlatform desktop;
    WebUIDelegate ui;
    Policy policy;
    requestNewWindow(desktop, ui, policy, "http://h/a");
    EXPECT_EQ(desktop.takeEvents(), Events({"load http://h/a"}));
    policy.allows = false;
    requestNewWindow(desktop, ui, policy, "http://h/a");
    EXPECT_EQ(desktop.takeEvents(), Events());
}

}  // namespace vok::test
