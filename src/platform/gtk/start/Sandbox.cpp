#include "platform/gtk/start/Sandbox.h"

#include <glibmm/spawn.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sched.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace vok {

const char* const sandboxRefusal =
    "This system does not let the installer show its pages.\n\n"
    "They are kept apart from everything else by bubblewrap, in user namespaces, which are forbidden to "
    "this program. Whoever administers the system can allow them.";

namespace {

/// WebKitGTK makes no sandbox where the user disables it, nor in a container.
bool webViewGoesWithout() {
    const char* const disabled = std::getenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS");
    return (disabled && std::string_view(disabled) != "0") || std::filesystem::exists("/run/.containerenv") ||
           std::filesystem::exists("/.flatpak-info") ||
           (std::getenv("SNAP") && std::getenv("SNAP_NAME") && std::getenv("SNAP_REVISION"));
}

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
    const std::vector<std::string> probe{"/usr/bin/bwrap", "--unshare-pid", "--ro-bind", "/", "/",
                                         "/bin/true"};
    int status = 0;
    try {
        Glib::spawn_sync("", probe, Glib::SpawnFlags::DEFAULT, {}, nullptr, nullptr, &status);
    } catch (const Glib::SpawnError&) {
        return false;
    }
    return status == 0;
}

}  // namespace

bool sandboxForbidden() {
    return !webViewGoesWithout() && (!namespaceCanBeMade() || namespaceWantsProfile()) && !bubblewrapWorks();
}

}  // namespace vok
