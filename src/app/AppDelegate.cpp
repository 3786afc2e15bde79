#include "app/AppDelegate.h"

#include "config/BrowserPaths.h"
#include "config/ConfigurationKeys.h"
#include "config/DictionaryLookup.h"
#include "foundation/Exception.h"
#include "foundation/Log.h"
#include "pages/PageHosts.h"
#include "texts/Texts.h"

#include <Poco/String.h>
#include <Poco/UUIDGenerator.h>

namespace vok {

namespace {

constexpr auto shortVersionKey = "CFBundleShortVersionString";

std::string randomUUIDString() {
    return Poco::toUpper(Poco::UUIDGenerator::defaultGenerator().createRandom().toString());
}

}  // namespace

AppDelegate::AppDelegate(const Platform& desktop) : platform(desktop), webView(&desktop.webView) {
    setWindow(desktop.window);
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() { return true; }

void AppDelegate::setWindow(Window& window) { appWindow = &window; }

void AppDelegate::applicationDidFinishLaunching() {
    try {
        installationId = randomUUIDString();
        appConfig = loadAppConfig();
        agentId = getAgentId();
        preferredLang = getPreferredLanguage("en");
        useLanguage(*preferredLang);
        webView->setPreferredLanguage(*preferredLang);
        versionChrome = FindValueInPlistFile(platform.propertyLists, chromeInfoPath, shortVersionKey);
        versionFireFox = FindValueInPlistFile(platform.propertyLists, firefoxInfoPath, shortVersionKey);
        versionSafari = FindValueInPlistFile(platform.propertyLists, safariInfoPath, shortVersionKey);
        openUrlInNewWindow = false;
        const auto hosts = FindStringInDict(config(), configuration::pageHosts);
        pageHosts = hosts ? std::optional(PageHostsFromString(*hosts)) : std::nullopt;

        if (FindStringInDict(config(), configuration::developerMode) == "yes")
            webView->enableDeveloperTools();

        webView->setShouldCloseWithWindow(true);
        webView->setShouldUpdateWhileOffscreen(true);
        webView->setFrameLoadDelegate(*this);
        webView->setPolicyDelegate(*this);
        webView->setUIDelegate(*this);

        const auto url = getSplashPageUrl();
        Log("Natigating to splash page (url = '%@')...", url);
        navigateTo(url);
    } catch (const Exception& exception) {
        showErrorMessage(StringWithFormat("Initialization failed.\n%@", exception.message()));
    }
}

}  // namespace vok
