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

/// What the installer needs from the desktop. Borrowed; outlives the delegate.
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
