#include "platform/shared/ErrorPage.h"

#include "foundation/StringWithFormat.h"

#include <Poco/String.h>

#include <map>
#include <string_view>

namespace vok {

/// ErrorPage.html, with names in double braces in place of what is filled in.
extern const std::string_view errorPageTemplate;

namespace {

std::string escapedForHtml(std::string text) {
    for (const auto& [character, entity] :
         {std::pair("&", "&amp;"), {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}})
        Poco::replaceInPlace(text, character, entity);
    return text;
}

std::string escapedForHtml(Text text) { return escapedForHtml(translated(text)); }

/// Host and port of `url`; empty when it has none.
std::string hostOf(const std::string& url) {
    const auto scheme = url.find("://");
    if (scheme == url.npos)
        return {};
    const auto authority = url.substr(scheme + 3, url.find_first_of("/?#", scheme + 3) - scheme - 3);
    return authority.substr(authority.rfind('@') + 1);
}

std::string heading(const std::string& host) {
    if (host.empty())
        return escapedForHtml(texts::pageNotLoaded);
    return StringWithFormat(escapedForHtml(texts::hostNotLoaded), "<bdi>" + escapedForHtml(host) + "</bdi>");
}

std::string paragraph(Text text) { return "<p class=\"advice\">" + escapedForHtml(text) + "</p>\n"; }

std::string advice(const FailedLoad& load) {
    std::string advice;
    if (load.canTryAgain)
        advice = paragraph(texts::tryAgainAdvice);
    else if (!load.startAgainURL.empty())
        advice = paragraph(texts::startAgainAdvice);
    return advice + paragraph(texts::contactAdvice);
}

std::string button(const char* id, const std::string& url, Text label) {
    return StringWithFormat("<a id=\"%@\" href=\"%@\">%@</a>\n", id, escapedForHtml(url),
                            escapedForHtml(label));
}

std::string buttons(const FailedLoad& load) {
    std::string buttons;
    if (load.canTryAgain)
        buttons += button("try-again", load.url, texts::tryAgain);
    if (!load.startAgainURL.empty())
        buttons += button("start-again", load.startAgainURL, texts::startAgain);
    return buttons;
}

std::string filled(std::string_view page, const std::map<std::string_view, std::string>& values) {
    std::string result;
    for (;;) {
        const auto begin = page.find("{{");
        result += page.substr(0, begin);
        if (begin == page.npos)
            return result;
        const auto end = page.find("}}", begin);
        result += values.at(page.substr(begin + 2, end - begin - 2));
        page.remove_prefix(end + 2);
    }
}

}  // namespace

FailureReason::FailureReason(Text text, const std::string& argument)
    : shown(argument.empty() ? translated(text) : StringWithFormat(translated(text), argument)),
      logged(argument.empty() ? text.english : StringWithFormat(text.english, argument)) {}

FailureReason::FailureReason(const std::string& engineMessage)
    : shown(engineMessage), logged(engineMessage) {}

FailureReason FailureReason::withEngineMessage(Text text, const std::string& message) {
    FailureReason reason(message);
    reason.shown = translated(text);
    return reason;
}

std::string errorPage(const FailedLoad& load, const std::string& logCommand) {
    return filled(errorPageTemplate, {
                                         {"language", languageInUse()},
                                         {"direction", isRightToLeft() ? "rtl" : "ltr"},
                                         {"title", escapedForHtml(texts::pageNotLoaded)},
                                         {"heading", heading(hostOf(load.url))},
                                         {"reason", escapedForHtml(load.reason.shown)},
                                         {"advice", advice(load)},
                                         {"buttons", buttons(load)},
                                         {"details", escapedForHtml(texts::details)},
                                         {"addressLabel", escapedForHtml(texts::address)},
                                         {"address", escapedForHtml(load.url)},
                                         {"reasonLabel", escapedForHtml(texts::reason)},
                                         {"loggedReason", escapedForHtml(load.reason.logged)},
                                         {"logLabel", escapedForHtml(texts::log)},
                                         {"logCommand", escapedForHtml(logCommand)},
                                     });
}

}  // namespace vok
