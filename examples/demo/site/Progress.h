#pragma once

#include "Query.h"

#include <map>
#include <mutex>
#include <string>

/// The reports of the install tool, by job. A page puts the name of its job into the report URL, and polls
/// the job's progress under the same name. Thread-safe.
class Progress {
public:
    /// Stores a report. `job` names the job; `event` is "progress" or "finished"; `percent`, `message`,
    /// `result` ("success" or "failed") and `version` are shown as they are.
    void store(const Query& report);

    /// The job's last report as a JSON object, with the number of `reports` so far, so that equal reports
    /// differ; an empty object before the first.
    std::string toJson(const std::string& job) const;

private:
    struct Job {
        Query last;
        int reports = 0;
    };

    mutable std::mutex mutex;
    std::map<std::string, Job> jobs;
};
