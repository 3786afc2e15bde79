#pragma once

#include <functional>
#include <memory>

namespace vok {

struct Platform;

/// The running application. Every call is on the main thread.
class Application {
public:
    virtual ~Application() = default;

    /// Ends the program, at the latest when the current callback has returned. May call `exit`: then it does
    /// not return, and nothing is destroyed.
    virtual void terminate() = 0;

    /// Calls `perform` once, in a later iteration of the main loop and not before `seconds` have passed.
    virtual void performAfterDelay(double seconds, std::function<void()> perform) = 0;
};

/// The application's life cycle; called on the main thread.
class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;

    /// Whether the application ends after its last window has closed.
    virtual bool applicationShouldTerminateAfterLastWindowClosed() = 0;

    /// Called once, when window and web view exist; the window need not be shown yet.
    virtual void applicationDidFinishLaunching() = 0;
};

/// Creates the delegate. The platform outlives it.
using ApplicationDelegateMaker = std::function<std::unique_ptr<ApplicationDelegate>(const Platform&)>;

/// Runs the application until it ends and returns the exit status of the program. Builds the window with its
/// web view, creates the delegate and calls applicationDidFinishLaunching. An exception of the delegate is
/// logged, and the application continues. Defined by the linked backend.
int ApplicationMain(int argc, char* argv[], ApplicationDelegateMaker makeDelegate);

}  // namespace vok
