#include "Progress.h"

#include <Poco/JSONString.h>

void Progress::store(const Query& report) {
    const std::scoped_lock lock(mutex);
    jobs[findInQuery(report, "job")] = {report, std::chrono::steady_clock::now()};
}

std::string Progress::toJson(const std::string& job) const {
    const std::scoped_lock lock(mutex);
    const auto found = jobs.find(job);
    if (found == jobs.end())
        return R"({"known": false})";
    using namespace std::chrono;
    const auto silence = duration_cast<milliseconds>(steady_clock::now() - found->second.heard);
    std::string json = R"({"known": true, "silence": )" + std::to_string(silence.count());
    for (const auto name : {"action", "event", "result", "percent", "message", "version"})
        json += ", " + Poco::toJSON(name) + ": " + Poco::toJSON(findInQuery(found->second.report, name));
    return json + "}";
}
