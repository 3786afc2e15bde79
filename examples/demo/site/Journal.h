#pragma once

#include "Query.h"

#include <mutex>
#include <string>
#include <string_view>

/// Logs the requests of pages, program and install tool to standard output, one line each. Thread-safe.
class Journal {
public:
    /// Writes a line of the kind ("command", "callback", ...) and its text; control characters become blanks.
    void write(std::string_view kind, std::string text);

private:
    std::mutex mutex;
};

/// The pairs as "name=value name=value", without the names in `without`.
std::string queryText(const Query& query, std::initializer_list<std::string_view> without = {});
