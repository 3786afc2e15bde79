// The smallest program that does the same as the installer's window: shows a local splash page, then the
// first page; and when a command page has loaded, the callback page. All settings are WebKitGTK's defaults.
// Usage: bare_webview SPLASH_URL PAGE_URL [COMMAND_URL CALLBACK_URL]

#include <webkit/webkit.h>

namespace {

struct Road {
    const char* splash;
    const char* page;
    const char* command;  ///< prefix of the command pages' URLs; may be null
    const char* callback;
};

void onLoadChanged(WebKitWebView* view, WebKitLoadEvent event, gpointer data) {
    if (event != WEBKIT_LOAD_FINISHED)
        return;
    const auto* const road = static_cast<const Road*>(data);
    const char* const url = webkit_web_view_get_uri(view);
    if (g_str_has_prefix(url, road->splash))
        webkit_web_view_load_uri(view, road->page);
    else if (road->command && g_str_has_prefix(url, road->command))
        webkit_web_view_load_uri(view, road->callback);
}

void onActivate(GtkApplication* application, gpointer data) {
    GtkWidget* const window = gtk_application_window_new(application);
    GtkWidget* const view = webkit_web_view_new();
    g_signal_connect(view, "load-changed", G_CALLBACK(onLoadChanged), data);
    gtk_window_set_default_size(GTK_WINDOW(window), 900, 680);
    gtk_window_set_child(GTK_WINDOW(window), view);
    gtk_window_present(GTK_WINDOW(window));
    webkit_web_view_load_uri(WEBKIT_WEB_VIEW(view), static_cast<const Road*>(data)->splash);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 3 && argc != 5) {
        g_printerr("Usage: bare_webview SPLASH_URL PAGE_URL [COMMAND_URL CALLBACK_URL]\n");
        return 2;
    }
    Road road{argv[1], argv[2], argc == 5 ? argv[3] : nullptr, argc == 5 ? argv[4] : nullptr};
    GtkApplication* const application =
        gtk_application_new("org.vok.BareWebView", G_APPLICATION_DEFAULT_FLAGS);
    g_signal_connect(application, "activate", G_CALLBACK(onActivate), &road);
    const int status = g_application_run(G_APPLICATION(application), 1, argv);
    g_object_unref(application);
    return status;
}
