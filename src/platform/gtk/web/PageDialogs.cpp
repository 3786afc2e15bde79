#include "platform/gtk/web/PageDialogs.h"

#include <algorithm>
#include <array>
#include <memory>

namespace vok {

namespace {

constexpr std::array contextMenuActions{
    WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD,
    WEBKIT_CONTEXT_MENU_ACTION_CUT,
    WEBKIT_CONTEXT_MENU_ACTION_COPY,
    WEBKIT_CONTEXT_MENU_ACTION_PASTE,
    WEBKIT_CONTEXT_MENU_ACTION_DELETE,
    WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL,
};

Alert alertFor(WebKitScriptDialog* dialog) {
    const std::shared_ptr<WebKitScriptDialog> kept(webkit_script_dialog_ref(dialog),
                                                   webkit_script_dialog_unref);
    const bool isQuestion = webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_CONFIRM;
    const auto end = [kept, isQuestion](bool agreed) {
        if (isQuestion)
            webkit_script_dialog_confirm_set_confirmed(kept.get(), agreed);
        webkit_script_dialog_close(kept.get());
    };
    return {AlertStyle::informational,  "", "OK", webkit_script_dialog_get_message(dialog),
            isQuestion ? "Cancel" : "", end};
}

}  // namespace

void answerScriptDialog(WebKitScriptDialog* dialog, const std::function<void(Alert)>& showSheet) {
    switch (webkit_script_dialog_get_dialog_type(dialog)) {
    case WEBKIT_SCRIPT_DIALOG_ALERT:
    case WEBKIT_SCRIPT_DIALOG_CONFIRM:
        showSheet(alertFor(dialog));
        break;
    case WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM:
        webkit_script_dialog_confirm_set_confirmed(dialog, true);
        break;
    case WEBKIT_SCRIPT_DIALOG_PROMPT:
        break;
    }
}

bool restrictContextMenu(WebKitContextMenu* menu) {
    for (guint i = webkit_context_menu_get_n_items(menu); i-- > 0;) {
        WebKitContextMenuItem* const item = webkit_context_menu_get_item_at_position(menu, i);
        const auto action = webkit_context_menu_item_get_stock_action(item);
        if (std::ranges::find(contextMenuActions, action) == contextMenuActions.end())
            webkit_context_menu_remove(menu, item);
    }
    return webkit_context_menu_get_n_items(menu) > 0;
}

}  // namespace vok
