#include "platform/shared/FailurePage.h"

#include <string_view>

namespace vok {

namespace {

constexpr std::string_view beginning = R"(<!doctype html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>This page could not be loaded</title>
<style>
:root { --ground: #f6f5f4; --text: #241f31; --muted: #5e5c64; --line: #d5d2cf; --accent: #1a5fb4; --on-accent: #fff }
@media (prefers-color-scheme: dark) {
  :root { --ground: #242424; --text: #fff; --muted: #c0bfbc; --line: #4a4a4a; --accent: #99c1f1; --on-accent: #1e1e1e }
}
body { margin: 0; min-height: 100vh; display: grid; place-items: center; background: var(--ground);
  color: var(--text); font: 16px/1.5 system-ui, sans-serif }
main { box-sizing: border-box; width: min(36rem, 100%); padding: 2rem }
h1 { margin: 0 0 .5rem; font-size: 1.5rem; line-height: 1.3 }
dl { margin: 1.5rem 0 2rem; padding: 1rem 0; border: solid var(--line); border-width: 1px 0; overflow-wrap: anywhere }
dt { color: var(--muted); font-size: .875rem }
dd { margin: 0 0 .75rem; max-height: 7.5rem; overflow: auto }
dd:last-child { margin: 0 }
a { display: inline-block; padding: .6rem 1.4rem; border-radius: .5rem; background: var(--accent);
  color: var(--on-accent); font-weight: 600; text-decoration: none }
a:focus-visible { outline: 3px solid var(--text); outline-offset: 2px }
</style>
<main>
<h1>This page could not be loaded</h1>
<p>Check the connection to the network and try again. If that does not help, tell whoever gave you this installer.</p>
<dl><dt>Address</dt><dd>)";

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

std::string link(const std::string& url, const std::string& title) {
    return "<a href=\"" + escapedForHtml(url) + "\">" + title + "</a>\n";
}

}  // namespace

std::string failurePage(const FailedLoad& load) {
    std::string page(beginning);
    page +=
        escapedForHtml(load.url) + "</dd><dt>Reason</dt><dd>" + escapedForHtml(load.reason) + "</dd></dl>\n";
    if (load.canTryAgain)
        page += link(load.url, "Try again");
    if (!load.startAgainURL.empty())
        page += link(load.startAgainURL, "Start again");
    return page + "<script>document.links[0]?.focus()</script>\n</main>\n</html>\n";
}

std::string unsupportedTypeReason(const std::string& mimeType) {
    return "A file of the type '" + mimeType + "' cannot be shown here.";
}

}  // namespace vok
