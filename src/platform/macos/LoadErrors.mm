#include "platform/macos/LoadErrors.h"

#include "platform/macos/Bridging.h"

#include <array>

#define DISABLE_LEGACY_WEBKIT_DEPRECATIONS
#import <WebKit/WebKit.h>

namespace vok {

namespace {

/// The engine's media player takes over the load.
constexpr NSInteger errorPlugInWillHandleLoad = 204;  // of WebKitErrorDomain; not in a public header

struct Row {
    NSInteger code;  ///< of NSURLErrorDomain
    Text reason;
};

constexpr auto rows = std::to_array<Row>({
    {NSURLErrorCannotFindHost, texts::hostNotFound},
    {NSURLErrorDNSLookupFailed, texts::hostNotFound},
    {NSURLErrorCannotConnectToHost, texts::connectionRefused},
    {NSURLErrorNotConnectedToInternet, texts::serverUnreachable},
    {NSURLErrorTimedOut, texts::noAnswer},
    {NSURLErrorNetworkConnectionLost, texts::connectionClosed},
    {NSURLErrorHTTPTooManyRedirects, texts::tooManyRedirects},
    {NSURLErrorSecureConnectionFailed, texts::secureConnectionFailed},
    {NSURLErrorServerCertificateHasBadDate, texts::certificateNotTrusted},
    {NSURLErrorServerCertificateUntrusted, texts::certificateNotTrusted},
    {NSURLErrorServerCertificateHasUnknownRoot, texts::certificateNotTrusted},
    {NSURLErrorServerCertificateNotYetValid, texts::certificateNotTrusted},
    {NSURLErrorFileDoesNotExist, texts::fileNotFound},
    {NSURLErrorUnsupportedURL, texts::addressNotSupported},
    {NSURLErrorBadURL, texts::addressNotSupported},
});

}  // namespace

bool isInterruption(NSError* error) {
    if ([error.domain isEqualToString:WebKitErrorDomain])
        return isPolicyInterruption(error) || error.code == errorPlugInWillHandleLoad;
    return [error.domain isEqualToString:NSURLErrorDomain] && error.code == NSURLErrorCancelled;
}

bool isPolicyInterruption(NSError* error) {
    return [error.domain isEqualToString:WebKitErrorDomain] &&
           error.code == WebKitErrorFrameLoadInterruptedByPolicyChange;
}

FailureReason reasonOf(NSError* error) {
    const auto message = toText(error.localizedDescription);
    for (const auto& [code, text] : rows) {
        if (error.code == code && [error.domain isEqualToString:NSURLErrorDomain])
            return FailureReason::withEngineMessage(text, message);
    }
    return FailureReason(message);
}

}  // namespace vok
