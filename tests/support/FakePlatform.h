#pragma once

#include "platform/Application.h"
#include "platform/Bundle.h"
#include "platform/Machine.h"
#include "platform/Platform.h"
#include "platform/PropertyListReader.h"
#include "platform/URLParser.h"
#include "platform/WebView.h"
#include "platform/Window.h"
#include "platform/Workspace.h"

#include <map>
#include <utility>

namespace vok::test {

using Events = std::vector<std::string>;
using Languages = std::optional<std::vector<std::string>>;

/// A fake of the whole port in one object. The test sets its answers; each call is recorded as a string in
/// `events`, in order.
struct FakePlatform final : Application,
                            Bundle,
                            Machine,
                            PropertyListReader,
                            URLParser,
                            WebView,
                            WebFrame,
                            WebPolicyDecisionListener,
                            Window,
                            Workspace {
    std::string bundle = "/Apps/Vok Test.app";
    Dictionary info = {{"CFBundleVersion", "1.2.3"}};
    std::map<std::string, Dictionary> propertyLists;  ///< by path
    std::map<std::string, URL> urls;                  ///< results other than the default parsing
    std::function<Languages()> languages = [] { return Languages(); };
    std::optional<std::string> uuid = "PLATFORM-UUID";
    LocalIdentities identities;
    std::function<std::optional<std::string>()> restartFailure = [] { return std::nullopt; };
    std::optional<std::string> currentURL;

    std::map<std::string, std::string> browsers;  ///< versions of the desktop's own browsers, by type

    Events events;
    std::function<void()> delayed;
    WebFrameLoadDelegate* frameLoadDelegate = nullptr;
    WebPolicyDelegate* policyDelegate = nullptr;
    WebUIDelegate* uiDelegate = nullptr;

    Platform port() { return {*this, *this, *this, *this, *this, *this, *this, *this}; }
    Events takeEvents() { return std::exchange(events, {}); }
    void record(const std::string& event) { events.push_back(event); }

    void terminate() override { record("terminate"); }
    void performAfterDelay(double seconds, std::function<void()> perform) override {
        record("perform after " + std::to_string(seconds));
        delayed = std::move(perform);
    }

    std::string bundlePath() const override { return bundle; }
    Dictionary infoDictionary() const override { return info; }

    std::string operatingSystemVersionString() const override { return "Test OS 12 (100%)"; }
    Languages preferredLanguages() const override { return languages(); }
    std::optional<std::string> platformUUID() const override { return uuid; }
    LocalIdentities localIdentities() const override { return identities; }
    std::optional<std::string> restart() override {
        record("restart");
        return restartFailure();
    }

    std::optional<Dictionary> dictionaryWithContentsOfFile(const std::string& path) const override {
        const auto found = propertyLists.find(path);
        return found == propertyLists.end() ? std::nullopt : std::optional(found->second);
    }

    /// Nothing for a string with a blank.
    std::optional<URL> URLWithString(const std::string& text) const override {
        if (const auto found = urls.find(text); found != urls.end())
            return found->second;
        if (text.find(' ') != text.npos)
            return std::nullopt;
        const auto whole = text.substr(0, text.find('#'));
        const auto mark = whole.find('?');
        return URL{text, mark == whole.npos ? std::nullopt : std::optional(whole.substr(mark + 1))};
    }

    WebFrame& mainFrame() override { return *this; }
    std::optional<std::string> mainFrameURL() const override { return currentURL; }
    void setShouldCloseWithWindow(bool close) override { record(close ? "close with window" : "stay"); }
    void setShouldUpdateWhileOffscreen(bool update) override {
        record(update ? "update off screen" : "rest");
    }
    void enableDeveloperTools() override { record("developer tools"); }
    void setPreferredLanguage(const std::string& code) override { record("language " + code); }
    void setFrameLoadDelegate(WebFrameLoadDelegate& delegate) override { frameLoadDelegate = &delegate; }
    void setPolicyDelegate(WebPolicyDelegate& delegate) override { policyDelegate = &delegate; }
    void setUIDelegate(WebUIDelegate& delegate) override { uiDelegate = &delegate; }
    WebView& webView() override { return *this; }
    void loadRequest(const std::string& url) override { record("load " + url); }
    void use() override { record("use"); }
    void ignore() override { record("ignore"); }

    void performMiniaturize() override { record("miniaturize"); }
    void beginAlertSheet(AlertStyle style, const std::string& title, const std::string& button,
                         const std::string& message) override {
        record((style == AlertStyle::critical ? "critical sheet " : "sheet ") + title + " [" + button + "] " +
               message);
    }
    void openURL(const std::string& url) override { record("browse " + url); }
    std::optional<std::string> browserVersion(const std::string& type) override {
        const auto version = browsers.find(type);
        return version == browsers.end() ? std::nullopt : std::optional(version->second);
    }
    void openFirefox() override { record("open Firefox"); }
};

}  // namespace vok::test
