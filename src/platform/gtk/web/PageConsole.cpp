#include "platform/gtk/web/PageConsole.h"

#include <glibmm/ustring.h>

#include <cstdio>
#include <string>

namespace vok {

namespace {

/// Runs in each frame before the scripts of its page.
constexpr auto reportingScript = R"js((() => {
    const handler = webkit.messageHandlers.pageConsole;
    const post = handler.postMessage.bind(handler);
    const {stringify} = JSON;
    const textOf = value => {
        try {
            if (typeof value === 'object' && value && !(value instanceof Error))
                return stringify(value);
        } catch {}
        return String(value);
    };
    const pageOf = url => url.replace(/[?#].*/, '');
    const placeIn = (stack, frame) => {
        const line = stack?.split('\n')[frame] ?? '';
        return line.slice(line.indexOf('@') + 1) || pageOf(document.URL);
    };
    const report = (level, values, place) => {
        try {
            post(`${place()}: ${level}: ${values.map(textOf).join(' ')}`.toWellFormed());
        } catch {}
    };
    for (const level of ['debug', 'dir', 'error', 'info', 'log', 'table', 'trace', 'warn']) {
        const original = console[level];
        console[level] = (...values) => {
            const {stack} = new Error();
            report(level, values, () => placeIn(stack, 1));
            original.apply(console, values);
        };
    }
    addEventListener('error', ({message, filename, lineno, colno}) => report(
        'error', [message], () => `${pageOf(filename || document.URL)}:${lineno}:${colno}`));
    addEventListener('unhandledrejection', ({reason}) => report(
        'error', ['Unhandled rejection:', reason], () => placeIn(reason?.stack, 0)));
})())js";

Glib::ustring withoutControlCharacters(const Glib::ustring& text) {
    Glib::ustring escaped;
    for (const gunichar character : text)
        if (g_unichar_isprint(character))
            escaped += character;
        else
            escaped += character == '\n' ? "\\n" : Glib::ustring::sprintf("\\u%04x", character);
    return escaped;
}

/// A page may send any value.
void print(JSCValue* message) {
    if (!jsc_value_is_string(message))
        return;
    g_autoptr(GBytes) bytes = jsc_value_to_string_as_bytes(message);
    gsize size = 0;
    const auto* const content = static_cast<const char*>(g_bytes_get_data(bytes, &size));
    const auto text = Glib::ustring(std::string(content, content + size)).make_valid();
    std::puts(withoutControlCharacters(text).c_str());
    std::fflush(stdout);
}

}  // namespace

SignalConnection printPageConsole(WebKitUserContentManager* pages) {
    auto messages = connect<void(JSCValue*)>(pages, "script-message-received::pageConsole", print);
    webkit_user_content_manager_register_script_message_handler(pages, "pageConsole", nullptr);
    g_autoptr(WebKitUserScript) script =
        webkit_user_script_new(reportingScript, WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES,
                               WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr);
    webkit_user_content_manager_add_script(pages, script);
    return messages;
}

}  // namespace vok
