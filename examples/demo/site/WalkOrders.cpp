#include "WalkOrders.h"

#include <utility>

std::optional<WalkOrders::Answer> WalkOrders::perform(Order order, std::chrono::seconds timeout) {
    std::unique_lock lock(mutex);
    order.number = ++lastNumber;
    answered.reset();
    unanswered = std::move(order);
    takenBy.clear();
    changed.notify_all();
    changed.wait_for(lock, timeout, [&] { return closed || answered; });
    unanswered.reset();
    return std::exchange(answered, std::nullopt);
}

std::optional<WalkOrders::Order> WalkOrders::next(const std::string& page, const std::string& token,
                                                  std::chrono::seconds timeout) {
    std::unique_lock lock(mutex);
    shownPage = page;
    shownToken = token;
    changed.notify_all();
    const auto left = [&] { return closed || shownToken != token; };
    const auto ordered = [&] { return unanswered && unanswered->page == page && takenBy != token; };
    changed.wait_for(lock, timeout, [&] { return left() || ordered(); });
    if (left() || !ordered())
        return std::nullopt;
    takenBy = token;
    return unanswered;
}

void WalkOrders::answer(int number, Answer answer) {
    const std::scoped_lock lock(mutex);
    if (number == lastNumber) {
        answered = std::move(answer);
        changed.notify_all();
    }
}

std::string WalkOrders::currentPage() const {
    const std::scoped_lock lock(mutex);
    return shownPage;
}

void WalkOrders::waitForRelease(std::chrono::seconds timeout) {
    std::unique_lock lock(mutex);
    changed.wait_for(lock, timeout, [&] { return closed || isReleased; });
}

void WalkOrders::releaseFirstPage() {
    const std::scoped_lock lock(mutex);
    isReleased = true;
    changed.notify_all();
}

void WalkOrders::close() {
    const std::scoped_lock lock(mutex);
    closed = true;
    changed.notify_all();
}
