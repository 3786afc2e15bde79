#include "pages/PageHosts.h"

#include "foundation/Exception.h"

#include <Poco/String.h>

#include <array>
#include <sstream>
#include <string_view>

namespace vok {

namespace {

struct Scheme {
    std::string_view prefix;
    std::string_view defaultPort;
};

constexpr auto schemes = std::to_array<Scheme>({{"https://", ":443"}, {"http://", ":80"}});

/// `rest` is a URL without its scheme.
std::string hostOf(const std::string& rest, std::string_view defaultPort) {
    auto host = rest.substr(0, rest.find_first_of("/\\?#"));  // the engine reads a backslash as a slash
    host.erase(0, host.rfind('@') + 1);
    if (host.ends_with(defaultPort))
        host.resize(host.size() - defaultPort.size());
    return host;
}

}  // namespace

std::set<std::string> PageHostsFromString(const std::string& value) {
    std::set<std::string> hosts;
    std::istringstream names(Poco::toLower(value));
    for (std::string host; names >> host;)
        hosts.insert(host);
    if (hosts.empty())
        raise(ExceptionKind::NSGenericException, "The value of 'pageHosts' names no host.");
    return hosts;
}

bool IsOnPageHost(const std::string& url, const std::set<std::string>& hosts) {
    const auto lowerCase = Poco::toLower(url);
    for (const auto& [prefix, defaultPort] : schemes) {
        if (lowerCase.starts_with(prefix))
            return hosts.contains(hostOf(lowerCase.substr(prefix.size()), defaultPort));
    }
    return true;
}

}  // namespace vok
