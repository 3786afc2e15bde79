#include "platform/gtk/web/WebKitSession.h"

#include "texts/Texts.h"

#include <string_view>

namespace vok {

namespace {

/// WebKitGTK throttles a page in a hidden window by several features.
bool isHiddenPageFeature(WebKitFeature* feature) {
    const std::string_view name = webkit_feature_get_identifier(feature);
    return name.starts_with("HiddenPage") || name.starts_with("PageVisibilityBased");
}

GObjectPtr<WebKitSettings> makeSettings(bool plainRenderer) {
    GObjectPtr<WebKitSettings> settings(webkit_settings_new());
    webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), true);
    if (plainRenderer)
        webkit_settings_set_hardware_acceleration_policy(settings.get(),
                                                         WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    return settings;
}

}  // namespace

WebKitSession::WebKitSession(bool plainRenderer, std::function<void(WebKitDownload*)> onDownload)
    : settings(makeSettings(plainRenderer)), network(webkit_network_session_new_ephemeral()),
      downloadStarted(connect<void(WebKitDownload*)>(
          network.get(), "download-started", [onDownload = std::move(onDownload)](WebKitDownload* download) {
              webkit_download_cancel(download);
              onDownload(download);
          })) {}

GObjectPtr<WebKitWebView> WebKitSession::makeView() const {
    return GObjectPtr<WebKitWebView>(WEBKIT_WEB_VIEW(g_object_ref_sink(g_object_new(
        WEBKIT_TYPE_WEB_VIEW, "network-session", network.get(), "settings", settings.get(), nullptr))));
}

/// Other strings could corrupt the header.
void WebKitSession::setPreferredLanguage(const std::string& code) {
    if (!isLanguageCode(code))
        return;
    const char* const languages[] = {code.c_str(), nullptr};
    webkit_web_context_set_preferred_languages(webkit_web_context_get_default(), languages);
}

void WebKitSession::enableDeveloperTools() {
    webkit_settings_set_enable_developer_extras(settings.get(), true);
    webkit_web_context_set_cache_model(webkit_web_context_get_default(), WEBKIT_CACHE_MODEL_DOCUMENT_VIEWER);
}

void WebKitSession::setFullSpeedWhileHidden(bool fullSpeed) {
    g_autoptr(WebKitFeatureList) features = webkit_settings_get_all_features();
    for (gsize i = 0; i < webkit_feature_list_get_length(features); ++i) {
        WebKitFeature* const feature = webkit_feature_list_get(features, i);
        if (isHiddenPageFeature(feature))
            webkit_settings_set_feature_enabled(settings.get(), feature, !fullSpeed);
    }
}

}  // namespace vok
