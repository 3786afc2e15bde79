// Prints the texts of the sheet that a program shows, "|" after each: title, message and button; with a
// second sheet, its texts follow. When told so, presses the button and goes on asking for the sheet until it
// is gone. A process of its own for each look, since the accessibility library does not forget windows that
// are gone. Usage: sheet <process> [press]

#include <atspi/atspi.h>

#include <iostream>
#include <memory>
#include <string>

namespace {

void visit(AtspiAccessible* node, bool press) {
    const auto role = atspi_accessible_get_role(node, nullptr);
    if (role == ATSPI_ROLE_LABEL) {
        const std::unique_ptr<char, decltype(&g_free)> name(atspi_accessible_get_name(node, nullptr), g_free);
        std::cout << name.get() << '|';
    }
    if (role == ATSPI_ROLE_PUSH_BUTTON && press)
        atspi_action_do_action(atspi_accessible_get_action_iface(node), 0, nullptr);
    const int count = atspi_accessible_get_child_count(node, nullptr);
    for (int i = 0; i < count; ++i)
        if (auto* const child = atspi_accessible_get_child_at_index(node, i, nullptr))
            visit(child, press);
}

/// The program's second window; its first, or nothing, when there is no second.
AtspiAccessible* sheetOf(AtspiAccessible* program) {
    return atspi_accessible_get_child_at_index(program, 1, nullptr);
}

void askUntilGone(AtspiAccessible* program) {
    atspi_accessible_set_cache_mask(program, ATSPI_CACHE_NONE);
    auto* const sheet = sheetOf(program);
    for (int question = 0; question < 100'000 && sheet && sheetOf(program) == sheet; ++question)
        continue;
}

}  // namespace

int main(int argc, char* argv[]) {
    atspi_init();
    auto* const desktop = atspi_get_desktop(0);
    const int programs = atspi_accessible_get_child_count(desktop, nullptr);
    for (int i = 0; i < programs; ++i) {
        auto* const program = atspi_accessible_get_child_at_index(desktop, i, nullptr);
        if (!program || std::to_string(atspi_accessible_get_process_id(program, nullptr)) != argv[1])
            continue;
        const bool press = argc > 2;
        visit(program, press);
        if (press)
            askUntilGone(program);
    }
}
