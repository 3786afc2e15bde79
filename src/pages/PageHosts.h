#pragma once

#include <set>
#include <string>

namespace vok {

/// The hosts in the value of the configuration key `pageHosts`, separated by blanks, in lower case; raises
/// NSGenericException when there is none. A host includes its port unless that is the scheme's default:
/// "setup.example.com", "127.0.0.1:8017".
std::set<std::string> PageHostsFromString(const std::string& value);

/// Whether `url` is on one of `hosts`, or neither http nor https.
bool IsOnPageHost(const std::string& url, const std::set<std::string>& hosts);

}  // namespace vok
