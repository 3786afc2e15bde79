#include "config/DictionaryLookup.h"
#include "support/InstallerTest.h"
#include "system/LocalUsers.h"

namespace vok::test {

TEST(DictionaryLookup, FindsValuesAndSaysWhatIsMissing) {
    const Dictionary dict = {{"key", "value"}, {"empty", ""}};
    FakePlatform desktop;
    desktop.propertyLists["/a.plist"] = dict;
    EXPECT_EQ(GetStringFromDict(&dict, "empty"), "");
    EXPECT_EQ(FindStringInDict(&dict, "Key"), std::nullopt);
    EXPECT_EQ(FindValueInPlistFile(desktop, "/a.plist", "key"), "value");
    EXPECT_EQ(FindValueInPlistFile(desktop, "/a.plist", "Key"), std::nullopt);
    EXPECT_EQ(FindValueInPlistFile(desktop, "/b.plist", "key"), std::nullopt);

    EXPECT_EQ(failureOf([&] { GetStringFromDict(&dict, "Key"); }), "generic: " + missing("Key"));
    EXPECT_EQ(failureOf([&] { FindStringInDict(&dict, nullptr); }),
              "argument: GetStringFromDict: Invalid argument.");
    EXPECT_EQ(failureOf([&] { FindValueInPlistFile(desktop, nullptr, "key"); }),
              "argument: FindValueFromPlistFile: Invalid argument.");
}

using EnvironmentTest = InstallerTest;

TEST_F(EnvironmentTest, ConfigurationDecidesEvenWithAnEmptyText) {
    desktop.languages = [] { return Languages({"fr"}); };
    for (const std::string value : {"some value", ""}) {
        config["agentId"] = config["targetDir"] = config["lang"] = config["installTool"] = value;
        start();
        EXPECT_EQ(installer.getAgentId(), value);
        EXPECT_EQ(installer.getTargetDirForAgent(std::nullopt), value);
        EXPECT_EQ(installer.getPreferredLanguage("en"), value);
        EXPECT_EQ(installer.getInstallToolPath(), "/Apps/Vok Test.app/Contents/MacOS/Tools/" + value);
    }
}

TEST_F(EnvironmentTest, MachineDecidesWhatTheConfigurationLeavesOpen) {
    EXPECT_EQ(installer.getAgentId(), "PLATFORM-UUID");
    EXPECT_EQ(installer.getTargetDirForAgent("ABC"), "/usr/local/etc/vok-ABC");
    EXPECT_EQ(failureOf([&] { installer.getInstallToolPath(); }),
              "argument: GetStringFromDict: Invalid argument.");
    config.clear();
    start();
    EXPECT_EQ(failureOf([&] { installer.getInstallToolPath(); }), "generic: " + missing("installTool"));
    EXPECT_EQ(installer.getTargetDirForAgent("ABC"), "/usr/local/etc/vok-ABC");
    EXPECT_EQ(failureOf([&] { installer.getTargetDirForAgent(std::nullopt); }),
              "argument: Failed to get target dir (agentId is nil).");
    EXPECT_EQ(installer.getAgentId(), "PLATFORM-UUID");
    desktop.uuid = std::nullopt;
    EXPECT_EQ(installer.getAgentId(), "(null)");
}

TEST_F(EnvironmentTest, FirstLanguageOfTheUserElseTheDefault) {
    EXPECT_EQ(installer.getPreferredLanguage("en"), "en");
    desktop.languages = [] { return Languages({"en-GB", "fr"}); };
    EXPECT_EQ(installer.getPreferredLanguage("en"), "en-GB");
    desktop.languages = [] { return Languages(std::in_place); };
    EXPECT_EQ(installer.getPreferredLanguage("en"), "en");
    desktop.languages = []() -> Languages { raise(ExceptionKind::NSGenericException, "no"); };
    EXPECT_EQ(installer.getPreferredLanguage("en"), "en");
}

TEST(LocalUsers, UsableAccountsAreKept) {
    FakePlatform desktop;
    desktop.identities = std::vector<LocalIdentity>{
        {true, false, "FULL", "Full Name", "short"}, {true, false, "SHORT", {}, "short"},
        {true, false, "EMPTY", "", "short"},         {true, false, {}, "No UUID", "nouuid"},
        {true, false, "NAMELESS", {}, {}},           {false, false, "DISABLED", "Disabled", "disabled"},
        {true, true, "HIDDEN", "Hidden", "hidden"},  {true, false, "FULL", "Later Name", "later"},
    };
    const Dictionary kept = {{"FULL", "Later Name"}, {"SHORT", "short"}, {"EMPTY", ""}};
    EXPECT_EQ(GetLocalUsers(desktop), kept);
}

TEST(LocalUsers, EachFailureHasItsMessage) {
    using enum LocalIdentitiesFailure::Step;
    FakePlatform desktop;
    const auto failure = [&](LocalIdentitiesFailure::Step step, std::optional<std::string> description) {
        desktop.identities = LocalIdentitiesFailure{step, std::move(description)};
        return failureOf([&] { GetLocalUsers(desktop); });
    };
    EXPECT_EQ(failure(authority, "x"), "generic: Failed to get local users.\nCannot get authority.");
    EXPECT_EQ(failure(query, "x"), "generic: Failed to get local users.\nCannot create query.");
    EXPECT_EQ(failure(execution, {}), "generic: Failed to get local users.\nCannot execute query.");
    EXPECT_EQ(failure(execution, "100% x"), "generic: Failed to get local users.\n100% x");
}

}  // namespace vok::test
