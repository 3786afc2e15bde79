#include "platform/gtk/web/PageDialogs.h"

#include "texts/Texts.h"

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
    WEBKIT_CONTEXT_MENU_ACTION_INSPECT_ELEMENT,  // with developer tools only
};

std::string windowTitle(WebKitWebView* view) {
    const char* const title = gtk_window_get_title(GTK_WINDOW(gtk_widget_get_root(GTK_WIDGET(view))));
    return title ? title : "";
}

Alert destructiveQuestion(WebKitWebView* view, Text agreeButton, Text message, Text cancelButton,
                          std::function<void(bool agreed)> onEnd) {
    Alert alert{AlertStyle::informational, windowTitle(view),        translated(agreeButton),
                translated(message),       translated(cancelButton), std::move(onEnd)};
    alert.isDestructive = true;
    return alert;
}

}  // namespace

Alert messageFor(WebKitWebView* view, const std::string& message) {
    return {AlertStyle::informational, windowTitle(view), translated(texts::ok), message};
}

std::optional<Alert> alertFor(WebKitWebView* view, WebKitScriptDialog* dialog) {
    const auto type = webkit_script_dialog_get_dialog_type(dialog);
    if (type == WEBKIT_SCRIPT_DIALOG_PROMPT)
        return std::nullopt;
    const bool isQuestion = type != WEBKIT_SCRIPT_DIALOG_ALERT;
    const std::shared_ptr<WebKitScriptDialog> kept(webkit_script_dialog_ref(dialog),
                                                   webkit_script_dialog_unref);
    const auto end = [kept, isQuestion](bool agreed) {
        if (isQuestion)
            webkit_script_dialog_confirm_set_confirmed(kept.get(), agreed);
        webkit_script_dialog_close(kept.get());
    };
    if (type == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM)
        return destructiveQuestion(view, texts::leave, texts::leaveQuestion, texts::stay, end);
    return Alert{AlertStyle::informational,
                 windowTitle(view),
                 translated(texts::ok),
                 webkit_script_dialog_get_message(dialog),
                 isQuestion ? translated(texts::cancel) : "",
                 end};
}

Alert runAgainQuestion(WebKitWebView* view, std::function<void(bool agreed)> onEnd) {
    return destructiveQuestion(view, texts::reload, texts::runAgainQuestion, texts::cancel, std::move(onEnd));
}

bool restrictContextMenu(WebKitContextMenu* menu, GSimpleAction* reload) {
    for (guint i = webkit_context_menu_get_n_items(menu); i-- > 0;) {
        WebKitContextMenuItem* const item = webkit_context_menu_get_item_at_position(menu, i);
        const auto action = webkit_context_menu_item_get_stock_action(item);
        if (action == WEBKIT_CONTEXT_MENU_ACTION_RELOAD && reload)
            webkit_context_menu_insert(menu,
                                       webkit_context_menu_item_new_from_gaction(
                                           G_ACTION(reload), translated(texts::reload).c_str(), nullptr),
                                       static_cast<int>(i));
        if (std::ranges::find(contextMenuActions, action) == contextMenuActions.end())
            webkit_context_menu_remove(menu, item);
    }
    return webkit_context_menu_get_n_items(menu) > 0;
}

}  // namespace vok
