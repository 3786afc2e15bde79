#include "platform/gtk/web/EmptyErrorResponse.h"

#include "foundation/Shielded.h"
#include "platform/gtk/support/Signal.h"

#include <libsoup/soup.h>

namespace vok {

namespace {

constexpr guint firstErrorStatus = 400;
constexpr gsize emptyLength = 1;  // WebKitGTK adds one byte to an empty body

struct Question {
    GObjectPtr<WebKitWebView> view;
    std::function<void(const char*, const FailureReason&)> tell;

    void onAnswer(WebKitWebResource* page, gsize length) const {
        if (length != emptyLength || page != webkit_web_view_get_main_resource(view.get()) ||
            webkit_web_view_is_loading(view.get()))
            return;
        const auto status = webkit_uri_response_get_status_code(webkit_web_resource_get_response(page));
        const auto error = std::to_string(status) + " " + soup_status_get_phrase(status);
        tell(webkit_web_resource_get_uri(page), {texts::serverError, error});
    }
};

}  // namespace

void findEmptyErrorResponse(WebKitWebView* view,
                            std::function<void(const char*, const FailureReason&)> tell) {
    WebKitWebResource* const page = webkit_web_view_get_main_resource(view);
    WebKitURIResponse* const response = page ? webkit_web_resource_get_response(page) : nullptr;
    if (!response || webkit_uri_response_get_status_code(response) < firstErrorStatus)
        return;
    auto question = std::make_unique<Question>(
        Question{GObjectPtr<WebKitWebView>(WEBKIT_WEB_VIEW(g_object_ref(view))), std::move(tell)});
    webkit_web_resource_get_data(
        page, nullptr,
        [](GObject* object, GAsyncResult* result, gpointer data) {
            const std::unique_ptr<Question> asked(static_cast<Question*>(data));
            WebKitWebResource* const resource = WEBKIT_WEB_RESOURCE(object);
            gsize length = 0;
            g_free(webkit_web_resource_get_data_finish(resource, result, &length, nullptr));
            shielded([&] { asked->onAnswer(resource, length); });
        },
        question.release());
}

}  // namespace vok
