#pragma once

#include "foundation/Shielded.h"

#include <deque>
#include <functional>

namespace vok {

/// The sheets of one window, shown one at a time in the order in which they were added.
class SheetQueue {
public:
    /// `windowIsReady` returns whether a sheet can be shown: the window exists and shows none.
    explicit SheetQueue(std::function<bool()> windowIsReady) : isReady(std::move(windowIsReady)) {}

    void add(std::function<void()> show) {
        waiting.push_back(std::move(show));
        showNext();
    }

    /// Shows the next sheet if the window is ready for it; to be called when a sheet has closed. An
    /// exception is logged, and the next sheet is shown.
    void showNext() {
        while (!waiting.empty() && isReady()) {
            const auto show = std::move(waiting.front());
            waiting.pop_front();
            shielded(show);
        }
    }

private:
    std::function<bool()> isReady;
    std::deque<std::function<void()>> waiting;
};

}  // namespace vok
