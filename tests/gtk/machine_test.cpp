#include "platform/gtk/services/LinuxMachine.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <map>
#include <regex>

namespace vok::test {

namespace {

using Languages = std::vector<std::string>;

struct Row {
    const char* name;
    std::map<std::string, std::string> variables;
    Languages languages;

    friend void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }
};

class LanguagesTest : public testing::TestWithParam<Row> {};

TEST_P(LanguagesTest, FollowTheLocale) {
    for (const auto* variable : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"})
        unsetenv(variable);
    for (const auto& [variable, value] : GetParam().variables)
        setenv(variable.c_str(), value.c_str(), 1);
    EXPECT_EQ(LinuxMachine().preferredLanguages(), GetParam().languages);
}

INSTANTIATE_TEST_SUITE_P(
    Locales, LanguagesTest,
    testing::ValuesIn(std::to_array<Row>({
        {"Unset", {}, {}},
        {"C", {{"LANG", "C"}}, {}},
        {"CWithCharset", {{"LC_ALL", "C.UTF-8"}}, {}},
        {"Posix", {{"LANG", "POSIX"}}, {}},
        {"Charset", {{"LANG", "en_GB.UTF-8"}}, {"en-GB", "en"}},
        {"Modifier", {{"LANG", "de_AT@euro"}}, {"de-AT", "de"}},
        {"LcAllWins", {{"LC_ALL", "fr"}, {"LANG", "de"}}, {"fr"}},
        {"LanguageWins", {{"LANGUAGE", "pt_BR:en"}, {"LC_ALL", "de_DE.UTF-8"}}, {"pt-BR", "pt", "en"}},
    })),
    [](const auto& test) { return test.param.name; });

TEST(LinuxMachineTest, PlatformUUIDIsStableUpperCaseText) {
    const auto uuid = LinuxMachine().platformUUID();
    ASSERT_TRUE(uuid) << "this machine has no /etc/machine-id";
    EXPECT_TRUE(std::regex_match(*uuid, std::regex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"))) << *uuid;
    EXPECT_EQ(LinuxMachine().platformUUID(), uuid);
}

}  // namespace

}  // namespace vok::test
