#pragma once

#include <string>

namespace vok {

/// Was a load interrupted, by a policy decision or by the engine's own media player, instead of failing?
/// `code` is that of an error of WebKit's own domains, which both systems number alike. A load that another
/// load cancels is interrupted too; each system has an error of its own for that.
constexpr bool isInterruption(long code) {
    constexpr long frameLoadInterruptedByPolicyChange = 102;
    constexpr long playerWillHandleLoad = 204;
    return code == frameLoadInterruptedByPolicyChange || code == playerWillHandleLoad;
}

/// Why a page could not be loaded, where the engine does not say it.
namespace failure {

inline constexpr auto notAllowed = "This address is not allowed.";
inline constexpr auto notAnAddress = "This is not the address of a page.";
inline constexpr auto noAnswer = "The server does not answer.";
inline constexpr auto untrustedCertificate = "The certificate of the server cannot be trusted.";
inline constexpr auto download = "It is a file to download, which cannot be shown here.";

/// The answer is a file of a type that the web view cannot show.
inline std::string unsupportedType(const std::string& mimeType) {
    return "A file of the type '" + mimeType + "' cannot be shown here.";
}

/// The answer is an HTTP error with an empty body.
inline std::string emptyErrorResponse(int status, const std::string& phrase) {
    return "The server answered " + std::to_string(status) + " " + phrase + ".";
}

}  // namespace failure

}  // namespace vok
