#include "app/AppDelegate.h"

#include "config/DictionaryLookup.h"
#include "foundation/Exception.h"
#include "platform/URLParser.h"

namespace vok {

using enum ExceptionKind;

void AppDelegate::executeCommandCallback(const CommandParams* commandParams, bool succeeded,
                                         const std::optional<std::string>& params) {
    if (!commandParams || !params)
        raise(NSInvalidArgumentException, "executeCommandCallback: Invalid argument.");
    const auto callbackUrl = FindStringInDict(commandParams, "callbackUrl");
    const auto reportUrl = FindStringInDict(commandParams, "reportUrl");
    const auto action = GetStringFromDict(commandParams, "command");
    processCallbackUrl(succeeded, callbackUrl, reportUrl, action, "finished", params);
}

void AppDelegate::processCallbackUrl(bool succeeded, const std::optional<std::string>& redirectUrl,
                                     const std::optional<std::string>& reportUrl,
                                     const std::optional<std::string>& action,
                                     const std::optional<std::string>& event,
                                     const std::optional<std::string>& params) {
    if ((!redirectUrl && !reportUrl) || !action || !event || !params)
        raise(NSInvalidArgumentException, "processCallbackUrl: Invalid argument.");
    const auto url =
        formatCallbackUrl(succeeded, redirectUrl ? redirectUrl : reportUrl, action, event, params);
    if (redirectUrl)
        ensureNavigatedTo(url);
    else
        showErrorMessage(StringWithFormat("Failed to report to url: '%@'", url));
}

std::string AppDelegate::formatCallbackUrl(bool succeeded, const std::optional<std::string>& baseUrl,
                                           const std::optional<std::string>& action,
                                           const std::optional<std::string>& event,
                                           const std::optional<std::string>& params) const {
    if (!baseUrl || !action || !event || !params)
        raise(NSInvalidArgumentException, "formatCallbackUrl: Invalid argument.");
    const auto base = platform.urls.URLWithString(*baseUrl);
    const auto joiner = base && base->query ? "&" : "?";
    return StringWithFormat("%@%@pid=%@&agentId=%@&action=%@&event=%@&result=%@&%@", *baseUrl, joiner,
                            installationId, agentId, *action, *event, succeeded ? "success" : "failed",
                            *params);
}

}  // namespace vok
