#pragma once

#include <sigc++/connection.h>

#include <functional>

namespace vok {

/// Limits how long a load waits for its server's answer, which WebKitGTK does not.
class AnswerTimeout {
public:
    /// `onSilence` is called when no answer came within a minute of `start`.
    explicit AnswerTimeout(std::function<void()> onSilence);
    ~AnswerTimeout();
    AnswerTimeout(const AnswerTimeout&) = delete;
    AnswerTimeout& operator=(const AnswerTimeout&) = delete;

    /// Begins to wait, or begins anew.
    void start();
    void stop();

private:
    std::function<void()> onSilence;
    sigc::connection timer;
};

}  // namespace vok
