#pragma once

#include <functional>
#include <memory>

namespace vok {

struct Platform;

/// The running application. Every call is on the main thread.
class Application {
public:
    virtual ~Application() = default;

    /// Ends the program, at the latest when the current callback has returned. May leave by `exit` from
    /// within the call: then it does not return, and nothing is destroyed.
    virtual void terminate() = 0;

    /// Calls `perform` once, on a later turn of the main loop and not before `seconds` have passed.
    virtual void performAfterDelay(double seconds, std::function<void()> perform) = 0;
};

/// What the platform tells the installer of the application's life, on the main thread.
class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;

    /// Asked after the last window has closed: does the application end with it?
    virtual bool applicationShouldTerminateAfterLastWindowClosed() = 0;

    /// Called once, when window and web view exist and the main loop runs.
    virtual void applicationDidFinishLaunching() = 0;
};

/// Makes the delegate; the platform outlives what it makes.
using ApplicationDelegateMaker = std::function<std::unique_ptr<ApplicationDelegate>(const Platform&)>;

/// Runs the application until it ends and returns the exit status of the program. Builds the window with its
/// web view, has the delegate made and tells it of the launch. Defined by the linked backend; what a delegate
/// throws is logged there and the application goes on.
int ApplicationMain(int argc, char* argv[], ApplicationDelegateMaker makeDelegate);

}  // namespace vok
