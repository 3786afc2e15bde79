#include "platform/gtk/services/AccountsService.h"

#include "platform/gtk/services/MessageBus.h"

#include <Poco/SHA1Engine.h>
#include <Poco/String.h>
#include <Poco/UUIDGenerator.h>
#include <giomm.h>

namespace vok {

namespace {

constexpr auto serviceName = "org.freedesktop.Accounts";
constexpr int callTimeout = 2000;  // milliseconds
using Step = LocalIdentitiesFailure::Step;
using Properties = std::map<Glib::ustring, Glib::VariantBase>;

/// The property, or an empty value when it is missing; throws std::bad_cast when it has another type.
template <class Value>
Value value(const Properties& properties, const char* name) {
    const auto property = properties.find(name);
    if (property == properties.end())
        return Value();
    return Glib::VariantBase::cast_dynamic<Glib::Variant<Value>>(property->second).get();
}

std::optional<std::string> unlessEmpty(const Glib::ustring& text) {
    return text.empty() ? std::nullopt : std::optional(text.raw());
}

std::optional<std::string> accountUUID(const std::optional<std::string>& machineUUID,
                                       std::uint64_t userNumber) {
    if (!machineUUID)
        return std::nullopt;
    Poco::SHA1Engine digest;
    const auto uuid = Poco::UUIDGenerator::defaultGenerator().createFromName(
        Poco::UUID(*machineUUID), std::to_string(userNumber), digest, Poco::UUID::UUID_NAME_BASED_SHA1);
    return Poco::toUpper(uuid.toString());
}

/// The value that a method of AccountsService returns; throws std::bad_cast when it has another type.
template <class Value>
Value call(Gio::DBus::Connection& bus, const Glib::ustring& path, const char* interface, const char* method,
           const Glib::VariantContainerBase& arguments) {
    auto reply = bus.call_sync(path, interface, method, arguments, serviceName, callTimeout);
    return Glib::VariantBase::cast_dynamic<Glib::Variant<Value>>(reply.get_child(0)).get();
}

/// Nothing for an account whose properties cannot be read.
std::optional<LocalIdentity> identity(Gio::DBus::Connection& bus, const Glib::ustring& path,
                                      const std::optional<std::string>& machineUUID) {
    try {
        const auto interface = Glib::VariantContainerBase::create_tuple(
            Glib::Variant<Glib::ustring>::create("org.freedesktop.Accounts.User"));
        const auto user = call<Properties>(bus, path, "org.freedesktop.DBus.Properties", "GetAll", interface);
        LocalIdentity account;
        account.isEnabled = !value<bool>(user, "Locked");
        account.isHidden = value<bool>(user, "SystemAccount");
        if (user.contains("Uid"))
            account.UUIDString = accountUUID(machineUUID, value<guint64>(user, "Uid"));
        account.fullName = unlessEmpty(value<Glib::ustring>(user, "RealName"));
        account.posixName = unlessEmpty(value<Glib::ustring>(user, "UserName"));
        return account;
    } catch (const std::bad_cast&) {
        return std::nullopt;
    } catch (const Glib::Error& error) {
        if (error.matches(G_IO_ERROR, G_IO_ERROR_TIMED_OUT))
            throw;  // the other accounts would time out, too
        return std::nullopt;
    }
}

}  // namespace

LocalIdentities accountsServiceIdentities(const std::optional<std::string>& machineUUID) {
    Glib::RefPtr<Gio::DBus::Connection> bus;
    try {
        bus = messageBus(Gio::DBus::BusType::SYSTEM);
    } catch (const Glib::Error&) {
        return LocalIdentitiesFailure{Step::authority, std::nullopt};
    }
    try {
        const auto users = call<std::vector<Glib::DBusObjectPathString>>(
            *bus.get(), "/org/freedesktop/Accounts", serviceName, "ListCachedUsers", {});
        std::vector<LocalIdentity> identities;
        for (const auto& path : users)
            if (auto account = identity(*bus.get(), path, machineUUID))
                identities.push_back(*std::move(account));
        return identities;
    } catch (Glib::Error& error) {
        if (error.matches(G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
            error.matches(G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER))
            return LocalIdentitiesFailure{Step::query, std::nullopt};
        g_dbus_error_strip_remote_error(error.gobj());
        return LocalIdentitiesFailure{Step::execution, error.what()};
    } catch (const std::bad_cast&) {
        return LocalIdentitiesFailure{Step::execution,
                                      "AccountsService returned a value of an unexpected type."};
    }
}

}  // namespace vok
