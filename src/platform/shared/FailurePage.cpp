#include "platform/shared/FailurePage.h"

#include "failure-page.html.h"
#include "foundation/Dictionary.h"

namespace vok {

namespace {

std::string escapedForHtml(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

/// `page` with each {{name}} replaced by the value of that name, escaped.
std::string filled(std::string_view page, const Dictionary& values) {
    std::string result;
    for (auto begin = page.find("{{"); begin != page.npos; begin = page.find("{{")) {
        const auto end = page.find("}}", begin);
        const std::string name(page.substr(begin + 2, end - begin - 2));
        result.append(page.substr(0, begin)).append(escapedForHtml(values.at(name)));
        page.remove_prefix(end + 2);
    }
    return result.append(page);
}

}  // namespace

std::string failurePage(const std::string& url, const std::string& reason) {
    return filled(failurePageHtml, {{"address", url}, {"reason", reason}});
}

}  // namespace vok
