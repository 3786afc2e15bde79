#include "platform/gtk/services/AccountsService.h"
#include "platform/gtk/support/Signal.h"

#include <Poco/Process.h>
#include <giomm.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

namespace vok::test {

using Step = LocalIdentitiesFailure::Step;
using Texts = std::vector<std::string>;
constexpr auto machineUUID = "5F0C1D9B-7E3A-4C28-9B64-2AD7C18350EF";

/// A private system bus, at first without any service.
class AccountsServiceTest : public testing::Test {
protected:
    AccountsServiceTest() {
        Gio::init();
        g_test_dbus_up(bus.get());
        setenv("DBUS_SYSTEM_BUS_ADDRESS", g_test_dbus_get_bus_address(bus.get()), 1);
    }

    void TearDown() override {
        if (service) {
            Poco::Process::kill(*service);
            service->wait();
        }
        g_test_dbus_down(bus.get());
    }

    void startService() {
        service.emplace(Poco::Process::launch(
            "/usr/bin/python3", {"-m", "dbusmock", "--system", "-l", "/dev/null", "org.freedesktop.Accounts",
                                 "/org/freedesktop/Accounts", "org.freedesktop.Accounts"}));
        ASSERT_EQ(std::system("gdbus wait --system --timeout 20 org.freedesktop.Accounts"), 0);
    }

    /// Lets ListCachedUsers run `code`, in Python, for a value of the D-Bus type `type`.
    void listUsers(const std::string& type, const std::string& code) {
        call("AddMethod org.freedesktop.Accounts ListCachedUsers '' " + type + " \"" + code + "\"");
    }

    void addUser(const std::string& path, const std::string& properties) {
        call("AddObject " + path + " org.freedesktop.Accounts.User \"{" + properties + "}\" '@a(ssss) []'");
    }

    static std::vector<LocalIdentity> identities(const std::optional<std::string>& uuid = machineUUID) {
        return std::get<std::vector<LocalIdentity>>(accountsServiceIdentities(uuid));
    }

    static LocalIdentitiesFailure failure() {
        return std::get<LocalIdentitiesFailure>(accountsServiceIdentities(machineUUID));
    }

private:
    static void call(const std::string& order) {
        const std::string program =
            "gdbus call --system -d org.freedesktop.Accounts -o /org/freedesktop/Accounts";
        ASSERT_EQ(std::system((program + " -m org.freedesktop.DBus.Mock." + order + " >/dev/null").c_str()),
                  0);
    }

    GObjectPtr<GTestDBus> bus{g_test_dbus_new(G_TEST_DBUS_NONE)};
    std::optional<Poco::ProcessHandle> service;
};

TEST_F(AccountsServiceTest, DescribesEveryAccount) {
    startService();
    listUsers("ao", "ret = ['/u/1', '/u/2', '/u/3', '/u/4']");
    addUser("/u/1", "'Uid': <uint64 1001>, 'UserName': <'ann'>, 'RealName': <'Ann Ü'>, 'Locked': <false>");
    addUser("/u/2", "'Uid': <uint64 1002>, 'UserName': <'bob'>, 'RealName': <''>");
    addUser("/u/3", "'Uid': <uint64 1003>, 'UserName': <'eve'>, 'RealName': <'Eve'>, 'Locked': <true>");
    addUser("/u/4", "'Uid': <uint64 33>, 'UserName': <'www'>, 'SystemAccount': <true>");

    Texts texts;
    std::set<std::optional<std::string>> uuids;
    for (const auto& account : identities()) {
        texts.push_back(account.posixName.value_or("-") + "/" + account.fullName.value_or("-") +
                        (account.isEnabled ? "" : " disabled") + (account.isHidden ? " hidden" : ""));
        uuids.insert(account.UUIDString);
    }
    EXPECT_EQ(texts, (Texts{"ann/Ann Ü", "bob/-", "eve/Eve disabled", "www/- hidden"}));
    EXPECT_EQ(uuids.size(), 4u);
    EXPECT_EQ(identities()[1].UUIDString, "0C6962C7-0521-52E8-A5D8-F06FD9093D82");
    EXPECT_FALSE(uuids.contains(identities("6F0C1D9B-7E3A-4C28-9B64-2AD7C18350EF")[0].UUIDString));
    EXPECT_EQ(identities(std::nullopt)[0].UUIDString, std::nullopt);
}

TEST_F(AccountsServiceTest, AFailureNamesItsStep) {
    EXPECT_EQ(failure().step, Step::query) << "there is no service";
    startService();
    listUsers("ao", "raise dbus.exceptions.DBusException('Out of order.', name='org.example.Broken')");
    EXPECT_EQ(failure().step, Step::execution);
    EXPECT_NE(failure().description.value_or("").find("Out of order."), std::string::npos);
    listUsers("s", "ret = 'nobody'");
    EXPECT_EQ(failure().step, Step::execution) << "the answer is of another type";
}

TEST_F(AccountsServiceTest, NoBusIsAMissingAuthority) {
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    EXPECT_EQ(failure().step, Step::authority);
}

}  // namespace vok::test
