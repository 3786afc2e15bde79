#include "platform/gtk/web/RefusedDrops.h"

namespace vok {

namespace {

constexpr auto allActions = static_cast<GdkDragAction>(GDK_ACTION_COPY | GDK_ACTION_MOVE | GDK_ACTION_LINK);

gboolean isForeignFileOrLink(GtkDropTargetAsync* /*target*/, GdkDrop* drop, void* /*data*/) {
    GdkContentFormats* const formats = gdk_drop_get_formats(drop);
    return !gdk_drop_get_drag(drop) && (gdk_content_formats_contain_mime_type(formats, "text/uri-list") ||
                                        gdk_content_formats_contain_mime_type(formats, "_NETSCAPE_URL"));
}

gboolean refuse(GtkDropTargetAsync* /*target*/, GdkDrop* drop, double /*x*/, double /*y*/, void* /*data*/) {
    gdk_drop_finish(drop, static_cast<GdkDragAction>(0));
    return true;
}

}  // namespace

void refuseDrops(GtkWidget* webView) {
    GtkDropTargetAsync* const target = gtk_drop_target_async_new(nullptr, allActions);
    gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(target), GTK_PHASE_CAPTURE);
    g_signal_connect(target, "accept", G_CALLBACK(isForeignFileOrLink), nullptr);
    g_signal_connect(target, "drop", G_CALLBACK(refuse), nullptr);
    gtk_widget_add_controller(webView, GTK_EVENT_CONTROLLER(target));
}

}  // namespace vok
