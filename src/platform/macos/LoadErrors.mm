#include "platform/macos/LoadErrors.h"

#include "platform/macos/Bridging.h"

#include <array>

#define DISABLE_LEGACY_WEBKIT_DEPRECATIONS
#import <WebKit/WebKit.h>

namespace vok {

namespace {

// Of WebKitErrorDomain; not in a public header.
constexpr NSInteger errorCannotUseRestrictedPort = 103;
constexpr NSInteger errorPlugInWillHandleLoad = 204;  // the engine's media player takes over the load

struct Row {
    NSInteger code;  ///< negative: of NSURLErrorDomain, else of WebKitErrorDomain
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
    {NSURLErrorUserCancelledAuthentication, texts::passwordRequired},
    {NSURLErrorFileDoesNotExist, texts::fileNotFound},
    {NSURLErrorUnsupportedURL, texts::addressNotSupported},
    {NSURLErrorBadURL, texts::addressNotSupported},
    {WebKitErrorCannotShowURL, texts::addressNotSupported},
    {errorCannotUseRestrictedPort, texts::addressNotAllowed},
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
        if (error.code == code &&
            [error.domain isEqualToString:code < 0 ? NSURLErrorDomain : WebKitErrorDomain])
            return FailureReason::withEngineMessage(text, message);
    }
    return FailureReason(message);
}

}  // namespace vok
