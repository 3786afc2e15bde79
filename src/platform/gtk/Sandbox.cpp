#include "platform/gtk/Sandbox.h"

#include <glibmm/spawn.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <vector>

namespace vok {

namespace {

struct Rule {
    const char* file;
    const char* forbidding;
};

/// Some let certain programs through, so a rule alone says little.
constexpr auto rules = std::to_array<Rule>({
    {"/proc/sys/kernel/apparmor_restrict_unprivileged_userns", "1"},  // Ubuntu
    {"/proc/sys/kernel/unprivileged_userns_clone", "0"},              // older Debian
    {"/proc/sys/user/max_user_namespaces", "0"},                      // every Linux
});

bool forbids(const Rule& rule) {
    std::ifstream file(rule.file);
    std::string value;
    return file >> value && value == rule.forbidding;
}

bool bubblewrapWorks() {
    const std::vector<std::string> probe{"bwrap", "--unshare-user", "--ro-bind", "/", "/", "/bin/true"};
    int status = 0;
    try {
        Glib::spawn_sync("", probe, Glib::SpawnFlags::SEARCH_PATH, {}, nullptr, nullptr, &status);
    } catch (const Glib::SpawnError&) {
        return false;
    }
    return status == 0;
}

}  // namespace

bool sandboxForbidden() { return std::ranges::any_of(rules, forbids) && !bubblewrapWorks(); }

}  // namespace vok
