#pragma once

namespace vok {

class Application;
class Bundle;
class Machine;
class PropertyListReader;
class URLParser;
class WebView;
class Window;
class Workspace;

/// What the installer asks of the desktop it runs on. Borrowed; outlives the delegate that is made with it.
struct Platform {
    Application& application;
    Window& window;
    WebView& webView;
    Workspace& workspace;
    const Bundle& bundle;
    const PropertyListReader& propertyLists;
    const URLParser& urls;
    Machine& machine;
};

}  // namespace vok
