#include "platform/shared/FailurePage.h"
#include "platform/shared/SheetQueue.h"
#include "support/InstallerTest.h"

namespace vok::test {

namespace {

TEST(FailurePageTest, ShowsItsTextsAsTheyStand) {
    const auto page = failurePage({"http://h/?a=1&b=\"<i>", "<script>no</script> & more"});
    EXPECT_NE(page.find("<dd>http://h/?a=1&amp;b=&quot;&lt;i&gt;</dd>"), std::string::npos);
    EXPECT_NE(page.find("href=\"http://h/?a=1&amp;b=&quot;&lt;i&gt;\""), std::string::npos);
    EXPECT_NE(page.find("<dd>&lt;script&gt;no&lt;/script&gt; &amp; more</dd>"), std::string::npos);
}

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

}  // namespace

}  // namespace vok::test
