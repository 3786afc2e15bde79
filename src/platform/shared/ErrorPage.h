#pragma once

#include "texts/Texts.h"

#include <string>

namespace vok {

/// Why a page could not be loaded.
struct FailureReason {
    /// `text`, with `argument` in its placeholder if it has one. The log has it in English.
    FailureReason(Text text, const std::string& argument = {});
    /// `text` for the user, the engine's message for the log.
    static FailureReason withEngineMessage(Text text, const std::string& message);
    /// The engine's message for both.
    explicit FailureReason(const std::string& engineMessage);

    std::string shown;   ///< in the language in use
    std::string logged;  ///< in English, or in the engine's words
};

struct FailedLoad {
    std::string url;  ///< of the page that was asked for; any string
    FailureReason reason;
    bool canTryAgain = true;         ///< offers `url` again
    std::string startAgainURL = {};  ///< what "Start again" leads to; the page offers it unless this is empty
};

/// The HTML page that takes the place of one that could not be loaded, in the language in use: names the host
/// and the reason, and offers ways to continue. Under "Details" it has the whole URL, which can be copied,
/// and `logCommand`, which shows the log.
std::string errorPage(const FailedLoad& load, const std::string& logCommand);

}  // namespace vok
