#include "platform/gtk/services/LinuxMachine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <regex>

namespace vok::test {

TEST(LinuxMachineTest, PreferredLanguagesFollowTheLocale) {
    const std::pair<std::map<std::string, std::string>, std::vector<std::string>> rows[] = {
        {{}, {}},
        {{{"LANG", "C"}}, {}},
        {{{"LC_ALL", "C.UTF-8"}}, {}},
        {{{"LANG", "POSIX"}}, {}},
        {{{"LANG", "en_GB.UTF-8"}}, {"en-GB", "en"}},
        {{{"LANG", "de_AT@euro"}}, {"de-AT", "de"}},
        {{{"LC_ALL", "fr"}, {"LANG", "de"}}, {"fr"}},
        {{{"LANGUAGE", "pt_BR:en"}, {"LC_ALL", "de_DE.UTF-8"}}, {"pt-BR", "pt", "en"}},
    };
    for (const auto& [variables, languages] : rows) {
        for (const auto* variable : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"})
            unsetenv(variable);
        for (const auto& [variable, value] : variables)
            setenv(variable.c_str(), value.c_str(), 1);
        EXPECT_EQ(LinuxMachine().preferredLanguages(), languages) << testing::PrintToString(variables);
    }
}

TEST(LinuxMachineTest, PlatformUUIDIsStableUpperCaseText) {
    const auto uuid = LinuxMachine().platformUUID();
    ASSERT_TRUE(uuid) << "this machine has no /etc/machine-id";
    EXPECT_TRUE(std::regex_match(*uuid, std::regex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"))) << *uuid;
    EXPECT_EQ(LinuxMachine().platformUUID(), uuid);
}

}  // namespace vok::test
