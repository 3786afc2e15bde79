#include "platform/shared/SheetQueue.h"
#include "support/InstallerTest.h"

namespace vok::test {

namespace {

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
