#include "platform/gtk/Sandbox.h"

#include <glibmm/spawn.h>

#include <fstream>
#include <sched.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace vok {

namespace {

bool namespaceCanBeMade() {
    const pid_t child = fork();
    if (child == 0)
        _exit(unshare(CLONE_NEWUSER));
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

/// Ubuntu lets everybody make a namespace, and only programs with a profile use it.
bool namespaceWantsProfile() {
    std::ifstream rule("/proc/sys/kernel/apparmor_restrict_unprivileged_userns");
    std::string value;
    return rule >> value && value == "1";
}

bool bubblewrapWorks() {
    const std::vector<std::string> probe{"bwrap", "--unshare-pid", "--ro-bind", "/", "/", "/bin/true"};
    int status = 0;
    try {
        Glib::spawn_sync("", probe, Glib::SpawnFlags::SEARCH_PATH, {}, nullptr, nullptr, &status);
    } catch (const Glib::SpawnError&) {
        return false;
    }
    return status == 0;
}

}  // namespace

bool sandboxForbidden() { return (!namespaceCanBeMade() || namespaceWantsProfile()) && !bubblewrapWorks(); }

}  // namespace vok
