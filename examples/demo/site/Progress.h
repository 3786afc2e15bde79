#pragma once

#include "Query.h"

#include <map>
#include <mutex>
#include <string>

/// What the install tool has reported, by job. A page names its job in the report URL that it hands out and
/// asks for the job's progress by the same name. Safe to use from every server thread.
class Progress {
public:
    /// Stores a report. `job` names the job; `event` is "progress" or "finished"; `percent`, `message`,
    /// `result` ("success" or "failed") and `version` are shown as they are.
    void store(const Query& report);

    /// The job's last report as a JSON object, with the number of `reports` so far, which tells a report from
    /// an equal one before it; an empty object when there is none yet.
    std::string toJson(const std::string& job) const;

private:
    struct Job {
        Query last;
        int reports = 0;
    };

    mutable std::mutex mutex;
    std::map<std::string, Job> jobs;
};
