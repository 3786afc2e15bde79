#pragma once

#include "Journal.h"
#include "Progress.h"
#include "WalkOrders.h"

#include <atomic>
#include <filesystem>
#include <optional>

/// What all exchanges of one server share.
struct Site {
    std::filesystem::path pages;                      ///< directory of the pages
    std::optional<std::filesystem::path> walkScript;  ///< added to every page during a walk
    Journal journal;
    Progress progress;
    WalkOrders walk;
    std::atomic<int> polls = 0;  ///< how often a page has asked for progress
};
