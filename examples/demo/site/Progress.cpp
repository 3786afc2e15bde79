#include "Progress.h"

#include <Poco/JSONString.h>

void Progress::store(const Query& report) {
    const std::scoped_lock lock(mutex);
    auto& job = jobs[findInQuery(report, "job")];
    job.last = report;
    ++job.reports;
}

std::string Progress::toJson(const std::string& job) const {
    const std::scoped_lock lock(mutex);
    const auto found = jobs.find(job);
    if (found == jobs.end())
        return "{}";
    std::string json = R"({"reports": )" + std::to_string(found->second.reports);
    for (const auto name : {"action", "event", "result", "percent", "message", "version"})
        json += ", " + Poco::toJSON(name) + ": " + Poco::toJSON(findInQuery(found->second.last, name));
    return json + "}";
}
