#include "platform/gtk/start/Sandbox.h"

#include "foundation/StringWithFormat.h"
#include "texts/Texts.h"

#include <glibmm/spawn.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
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

namespace {

/// WebKitGTK uses no sandbox when the user disables it, nor in a container.
bool webViewGoesWithout() {
    const char* const disabled = std::getenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS");
    return (disabled && std::string_view(disabled) != "0") || std::filesystem::exists("/run/.containerenv") ||
           std::filesystem::exists("/.flatpak-info") ||
           (std::getenv("SNAP") && std::getenv("SNAP_NAME") && std::getenv("SNAP_REVISION"));
}

/// Makes a namespace by a child that shares this process's memory; `fork` would copy its page tables.
bool namespaceCanBeMade() {
    alignas(std::max_align_t) std::array<char, 16384> stack{};
    const auto exit = [](void*) { return 0; };
    const pid_t child =
        clone(exit, stack.data() + stack.size(), CLONE_NEWUSER | CLONE_VM | CLONE_VFORK | SIGCHLD, nullptr);
    return child > 0 && waitpid(child, nullptr, 0) == child;
}

/// A kernel setting that blocks user namespaces, the command that allows them, and the advice to the user.
struct Setting {
    const char* path;
    std::string_view blockingValue;
    const char* command;
    Text advice;
};

/// On Ubuntu every program can create a namespace, but needs an AppArmor profile to use it.
constexpr Setting appArmor = {"/proc/sys/kernel/apparmor_restrict_unprivileged_userns", "1",
                              "sysctl kernel.apparmor_restrict_unprivileged_userns=0", texts::allowByProfile};

constexpr auto settings = std::to_array<Setting>({
    {"/proc/sys/kernel/unprivileged_userns_clone", "0", "sysctl kernel.unprivileged_userns_clone=1",
     texts::allowByCommand},
    {"/proc/sys/user/max_user_namespaces", "0", "sysctl user.max_user_namespaces=10000",
     texts::allowByCommand},
    appArmor,
});

bool blocks(const Setting& setting) {
    std::ifstream file(setting.path);
    std::string value;
    return file >> value && value == setting.blockingValue;
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
    return !webViewGoesWithout() && (!namespaceCanBeMade() || blocks(appArmor)) && !bubblewrapWorks();
}

std::string sandboxAdvice() {
    const auto* const setting = std::ranges::find_if(settings, blocks);
    return translated(texts::sandboxBlocked) + "\n\n" +
           (setting == settings.end() ? translated(texts::allowSomehow)
                                      : StringWithFormat(translated(setting->advice), setting->command));
}

}  // namespace vok
