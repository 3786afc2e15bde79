#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

/// Passes the orders of a walk driver to the page that is shown, and the page's answers back. There is one
/// order at a time. Thread-safe.
///
/// The driver calls `perform` and waits; the page waits in `next` and calls `answer` when it has carried out
/// the order. A page is identified by its path and by a token made when it was loaded, so an order never
/// reaches a page that has been left.
class WalkOrders {
public:
    struct Order {
        int number = 0;
        std::string page;      ///< path of the page, such as "/machine.html"
        std::string action;    ///< "click" or "read"
        std::string selector;  ///< CSS selector of the element
    };
    struct Answer {
        bool obeyed = false;
        std::string text;
    };

    /// Passes the order to its page as soon as that is shown, and waits for the answer. Nothing on a timeout.
    std::optional<Answer> perform(Order order, std::chrono::seconds timeout);
    /// The next order for the page with this path and token. Nothing on a timeout.
    std::optional<Order> next(const std::string& page, const std::string& token,
                              std::chrono::seconds timeout);
    void answer(int number, Answer answer);

    /// Path of the page that last called `next`; empty before the first call.
    std::string currentPage() const;

    /// Waits until `releaseFirstPage` is called, or for `timeout`.
    void waitForRelease(std::chrono::seconds timeout);
    void releaseFirstPage();

    /// Ends all current and future waits.
    void close();

private:
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::optional<Order> unanswered;
    std::string takenBy;  ///< token of the page that has the order; empty if none has
    std::optional<Answer> answered;
    std::string shownPage;
    std::string shownToken;
    int lastNumber = 0;
    bool isReleased = false;
    bool closed = false;
};
