#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

/// Carries the orders of a walk driver to the page that is being shown, and the page's answers back. One
/// order is under way at a time. Safe to use from every server thread.
///
/// The driver calls `perform` and waits; the page waits in `next` and calls `answer` when it has obeyed. A
/// page is known by its path and by a token of its own, made when it was loaded, so an order never goes to a
/// page that has been left.
class WalkOrders {
public:
    struct Order {
        int number = 0;
        std::string page;      ///< path of the page it is meant for, "/machine.html"
        std::string action;    ///< "click" or "read"
        std::string selector;  ///< CSS selector of the element
    };
    struct Answer {
        bool obeyed = false;
        std::string text;
    };

    /// Hands the order to its page as soon as that is shown and waits for the answer. Nothing when none came
    /// in time.
    std::optional<Answer> perform(Order order, std::chrono::seconds timeout);
    /// The order for the page with this path and token, when one comes in time.
    std::optional<Order> next(const std::string& page, const std::string& token,
                              std::chrono::seconds timeout);
    void answer(int number, Answer answer);

    /// Path of the page that asked last; empty before the first one.
    std::string currentPage() const;

    /// Waits until `openDoors` was called, or for that long.
    void waitAtDoors(std::chrono::seconds timeout);
    void openDoors();

    /// Ends every wait, now and later.
    void close();

private:
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::optional<Order> unanswered;
    std::string takenBy;  ///< token of the page that has the order; empty while none has
    std::optional<Answer> answered;
    std::string shownPage;
    std::string shownToken;
    int lastNumber = 0;
    bool doorsOpen = false;
    bool closed = false;
};
