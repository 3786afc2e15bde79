#include "platform/gtk/web/LoadErrors.h"

#include <gio/gio.h>
#include <libsoup/soup.h>
#include <webkit/webkit.h>

#include <algorithm>
#include <array>

namespace vok {

namespace {

constexpr int any = -1;

struct Row {
    GQuark (*domain)();
    int code;  ///< or any
    Text reason;
};

constexpr auto rows = std::to_array<Row>({
    {g_resolver_error_quark, any, texts::hostNotFound},
    {g_io_error_quark, G_IO_ERROR_CONNECTION_REFUSED, texts::connectionRefused},
    {g_io_error_quark, G_IO_ERROR_HOST_UNREACHABLE, texts::serverUnreachable},
    {g_io_error_quark, G_IO_ERROR_NETWORK_UNREACHABLE, texts::serverUnreachable},
    {g_io_error_quark, G_IO_ERROR_TIMED_OUT, texts::noAnswer},
    {g_io_error_quark, G_IO_ERROR_CONNECTION_CLOSED, texts::connectionClosed},
    {g_io_error_quark, G_IO_ERROR_PARTIAL_INPUT, texts::connectionClosed},
    {soup_session_error_quark, SOUP_SESSION_ERROR_TOO_MANY_REDIRECTS, texts::tooManyRedirects},
    {g_tls_error_quark, any, texts::secureConnectionFailed},
    {webkit_network_error_quark, WEBKIT_NETWORK_ERROR_FILE_DOES_NOT_EXIST, texts::fileNotFound},
    {webkit_network_error_quark, WEBKIT_NETWORK_ERROR_UNKNOWN_PROTOCOL, texts::addressNotSupported},
    {webkit_policy_error_quark, WEBKIT_POLICY_ERROR_CANNOT_SHOW_URI, texts::addressNotSupported},
    {webkit_policy_error_quark, WEBKIT_POLICY_ERROR_CANNOT_USE_RESTRICTED_PORT, texts::addressNotAllowed},
});

}  // namespace

bool isInterruption(const GError& error) {
    return g_error_matches(&error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED) ||
           g_error_matches(&error, WEBKIT_POLICY_ERROR,
                           WEBKIT_POLICY_ERROR_FRAME_LOAD_INTERRUPTED_BY_POLICY_CHANGE);
}

FailureReason reasonOf(const GError& error) {
    const auto* const row = std::ranges::find_if(rows, [&](const Row& candidate) {
        return error.domain == candidate.domain() && (candidate.code == any || candidate.code == error.code);
    });
    if (row == rows.end())
        return FailureReason(error.message);
    return FailureReason::withEngineMessage(row->reason, error.message);
}

}  // namespace vok
