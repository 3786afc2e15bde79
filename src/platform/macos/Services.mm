#include "platform/macos/Services.h"

#include "foundation/Log.h"
#include "platform/macos/Bridging.h"
#include "platform/macos/CocoaCalls.h"

#import <AppKit/AppKit.h>

namespace vok {

namespace {

/// The absolute string with every apostrophe in the query escaped. The engine does so for http and https (the
/// special-query percent-encode set of the URL standard), NSURL does not.
std::string asEngineWrites(NSURL* url) {
    auto text = toText(url.absoluteString);
    NSArray* const specialSchemes = @[ @"http", @"https", @"file", @"ftp", @"ws", @"wss" ];
    if (!url.query || ![specialSchemes containsObject:url.scheme.lowercaseString])
        return text;
    const auto query = text.find('?');
    for (auto at = text.find('\'', query); at < text.find('#'); at = text.find('\'', at))
        text.replace(at, 1, "%27");
    return text;
}

}  // namespace

std::string MainBundle::bundlePath() const {
    return callCocoa([] { return toText([[NSBundle mainBundle] bundlePath]); });
}

Dictionary MainBundle::infoDictionary() const {
    return callCocoa([] { return toDictionary([[NSBundle mainBundle] infoDictionary]); });
}

std::optional<Dictionary> PlistReader::dictionaryWithContentsOfFile(const std::string& path) const {
    return callCocoa([&]() -> std::optional<Dictionary> {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
        NSDictionary* const dictionary = [NSDictionary dictionaryWithContentsOfFile:toNSString(path)];
#pragma clang diagnostic pop
        return dictionary ? std::optional(toDictionary(dictionary)) : std::nullopt;
    });
}

std::optional<URL> NSURLParser::URLWithString(const std::string& text) const {
    return callCocoa([&]() -> std::optional<URL> {
        NSURL* const url = toNSURL(text);
        if (!url)
            return std::nullopt;
        return URL{asEngineWrites(url), toOptionalText(url.query)};
    });
}

/// Does not use `calledFromCocoa`, which would log a failure to log.
void writeLogLine(const std::string& line) noexcept {
    try {
        callCocoa([&] { NSLog(@"%@", toNSString(line)); });
    } catch (...) {
    }
}

std::string logCommand() {
    return callCocoa([] {
        return "log show --last 1h --predicate 'process == \"" +
               toText([[NSProcessInfo processInfo] processName]) + "\"'";
    });
}

void SharedWorkspace::openURL(const std::string& url) {
    const bool opened = shielded([&] {
        return callCocoa([&] {
            NSURL* const target = toNSURL(url);
            return target && [[NSWorkspace sharedWorkspace] openURL:target];
        });
    });
    if (!opened)
        Log("Failed to open '%@' in the default browser.", url);
}

}  // namespace vok
