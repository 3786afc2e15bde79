#include "bridge/UrlQuery.h"
#include "support/InstallerTest.h"

namespace vok::test {

struct Query {
    const char* name;
    std::string query;
    Dictionary params;
};

struct UrlQueryTest : testing::TestWithParam<Query> {};

TEST_P(UrlQueryTest, BecomesParameters) {
    EXPECT_EQ(UrlQueryToDictionary(GetParam().query), GetParam().params);
}

const Query queries[] = {
    {"Pairs", "command=getstate&callbackUrl=x", {{"command", "getstate"}, {"callbackUrl", "x"}}},
    {"Nothing", "", {}},
    {"EmptyPieces", "&&command=hide&&b=2&", {{"command", "hide"}, {"b", "2"}}},
    {"EmptyKey", "=x&=&command=hide&=%zz", {{"command", "hide"}}},
    {"EmptyValues", "flag&command=", {{"flag", ""}, {"command", ""}}},
    {"LastOccurrenceWins", "command=install&%63ommand=cancel", {{"command", "cancel"}}},
    {"LastOccurrenceMayBeEmpty", "a=1&a", {{"a", ""}}},
    {"CaseOfKeysCounts", "a=1&A=2", {{"a", "1"}, {"A", "2"}}},
    {"SecondEqualsSign", "a=b=%zz&d==e", {{"a", "b"}, {"d", ""}}},
    {"DecodedAfterSplitting", "url=a%3Db%26c&%26%3D=%2541", {{"url", "a=b&c"}, {"&=", "%41"}}},
    {"PlusAndBlank", "a+b=a+b&c=a%20b", {{"a+b", "a+b"}, {"c", "a b"}}},
    {"Utf8", "n%C3%A4me=%E6%97%A5\xC3\xB6", {{"näme", "日ö"}}},
    {"Nul", "a=x%00y", {{"a", std::string("x\0y", 3)}}},
};
INSTANTIATE_TEST_SUITE_P(Queries, UrlQueryTest, testing::ValuesIn(queries), rowName);

TEST(UrlQuery, RefusesNilAndWhatDoesNotDecode) {
    EXPECT_EQ(failureOf([] { UrlQueryToDictionary({}); }),
              "argument: UrlQueryToDictionary: Invalid argument.");
    for (const auto query : {"a=%", "%4=a", "%zz", "a=1&b=%C0%80", "%ED%A0%80=1", "a=%E2%82", "a=%C3&b=%B6"})
        EXPECT_TRUE(failureOf([&] { UrlQueryToDictionary(query); }).starts_with("argument: ")) << query;
}

/// A command URL's query, and the events that it causes.
struct Run {
    const char* name;
    std::string query;
    Events events;
};

struct DispatchTest : InstallerTest, testing::WithParamInterface<Run> {};

TEST_P(DispatchTest, DoesWhatTheQuerySays) {
    start();
    EXPECT_EQ(run(GetParam().query), GetParam().events);
}

const std::string noUrl = commandFailed("processCallbackUrl: Invalid argument.");
const std::string later = "perform after 0.000000";
const Run commands[] = {
    {"Install", "command=InStall", {commandFailed(missing("configTemplateUrl"))}},
    {"Upgrade", "command=upgrade&configTemplateUrl=", {commandFailed(missing("installerUrl"))}},
    {"Repair", "command=REPAIR&configTemplateUrl=&installerUrl=", {commandFailed(missing("reportUrl"))}},
    {"Uninstall", "command=unInstall", {commandFailed(missing("reportUrl"))}},
    {"Reboot", "command=Reboot&callbackUrl=c", {"restart", "terminate"}},
    {"Cancel", "command=cancel&callbackUrl=c", {"load c?" + report("cancel")}},
    {"Finish", "command=FINISH&callbackUrl=c", {later, "load c?" + report("FINISH")}},
    {"Hide", "command=hiDe&callbackUrl=c", {"miniaturize", "load c?" + report("hiDe")}},
    {"LongerName", "command=hided", {commandFailed("Unsupported command (command = 'hided').")}},
    {"ShorterName", "command=hid", {commandFailed("Unsupported command (command = 'hid').")}},
    {"EmptyName", "command=", {commandFailed("Unsupported command (command = '').")}},
    {"BlankFirst", "command=%20hide", {commandFailed("Unsupported command (command = ' hide').")}},
    {"NoName", "cmd=install", {commandFailed(missing("command"))}},
    {"NoParameters", "", {commandFailed(missing("command"))}},
    {"CallbackQuery", "command=cancel&callbackUrl=c/?s%3D3", {"load c/?s=3&" + report("cancel")}},
    {"NothingIsEscaped", "command=cancel&callbackUrl=a%20%25?", {"load a %??" + report("cancel")}},
    {"BothUrls", "command=cancel&callbackUrl=&reportUrl=r", {"load ?" + report("cancel")}},
    {"ReportUrlAlone",
     "command=cancel&reportUrl=r?s",
     {errorSheet("Failed to report to url: 'r?s&" + report("cancel") + "'")}},
    {"NoUrlForHide", "command=hide", {"miniaturize", noUrl}},
    {"NoUrlForFinish", "command=finish", {later, noUrl}},
};
INSTANTIATE_TEST_SUITE_P(Commands, DispatchTest, testing::ValuesIn(commands), rowName);

struct BridgeTest : InstallerTest {
    void SetUp() override { start(); }
};

TEST_F(BridgeTest, MissingToolsAreShown) {
    config.erase("installTool");
    start();
    for (const std::string command : {"install", "uninstall", "GetState"})
        EXPECT_EQ(run("callbackUrl=c&command=" + command), Events{commandFailed(missing("installTool"))});
    config.erase("launchAsAdminTool");
    start();
    EXPECT_EQ(run("command=install"), Events{commandFailed(missing("launchAsAdminTool"))});
}

TEST_F(BridgeTest, OnlyTheInstallersExceptionsAreCaught) {
    EXPECT_TRUE(run("command=%C0%80").at(0).starts_with(commandFailed("")));
    desktop.restartFailure = []() -> std::optional<std::string> { throw std::runtime_error("broken"); };
    EXPECT_THROW(run("command=reboot"), std::runtime_error);
}

TEST_F(BridgeTest, FinishEndsOnALaterTurnEvenWhenItCannotReport) {
    run("command=finish");
    desktop.delayed();
    EXPECT_EQ(desktop.events, Events{"terminate"});
}

TEST_F(BridgeTest, RefusedRestartIsShownAndTheInstallerStays) {
    desktop.restartFailure = [] { return "Not 100% now."; };
    EXPECT_EQ(run("command=reboot"), (Events{"restart", errorSheet("Reboot failed.\nNot 100% now.")}));
}

TEST_F(BridgeTest, BrowsersAreThoseFoundAtStartUp) {
    const auto list = [&](const std::map<std::string, Dictionary>& applications) {
        for (const auto& [name, info] : applications)
            desktop.propertyLists["/Applications/" + name + ".app/Contents/Info.plist"] = info;
        start();
        desktop.propertyLists.clear();
        return run("command=getbrowsers&callbackUrl=c")
            .at(0)
            .substr(("load c?" + report("getbrowsers")).size());
    };
    const auto key = "CFBundleShortVersionString";
    const Dictionary chrome = {{key, ""}}, firefox = {{key, "9.0 b&1"}}, safari = {{key, "17.1"}};
    EXPECT_EQ(list({{"Safari", {{"CFBundleVersion", "1"}}}}), "type[]=&version[]=&");
    EXPECT_EQ(list({{"Safari", safari}}), "type[0]=safari&version[0]=17.1&");
    EXPECT_EQ(
        list({{"Safari", safari}, {"Firefox", firefox}, {"Google Chrome", chrome}}),
        "type[0]=chrome&version[0]=&type[1]=firefox&version[1]=9.0 b&1&type[2]=safari&version[2]=17.1&");
    desktop.browsers = {{"chrome", "1.2"}, {"firefox", "3.4"}};
    EXPECT_EQ(list({{"Firefox", firefox}}),
              "type[0]=chrome&version[0]=1.2&type[1]=firefox&version[1]=9.0 b&1&");
}

TEST_F(BridgeTest, CallbackUrlSaysThatTheCommandFailed) {
    EXPECT_EQ(installer.formatCallbackUrl(false, "https://c.test/result", "getstate", "stopped", "v=2"),
              "https://c.test/result?pid=" + pid() +
                  "&agentId=AGENT&action=getstate&event=stopped&result=failed&v=2");
}

TEST_F(BridgeTest, CallbackRefusesNil) {
    const CommandParams nameless = {{"callbackUrl", "u"}};
    const std::string invalid = "argument: executeCommandCallback: Invalid argument.";
    EXPECT_EQ(failureOf([&] { installer.executeCommandCallback(nullptr, true, ""); }), invalid);
    EXPECT_EQ(failureOf([&] { installer.executeCommandCallback(&nameless, true, {}); }), invalid);
    EXPECT_EQ(failureOf([&] { installer.executeCommandCallback(&nameless, true, ""); }),
              "generic: " + missing("command"));
    EXPECT_EQ(failureOf([&] { installer.formatCallbackUrl(true, "url", "action", {}, ""); }),
              "argument: formatCallbackUrl: Invalid argument.");
}

}  // namespace vok::test
