#include "Reporter.h"

#include "Download.h"
#include "Log.h"

#include <Poco/URI.h>

#include <utility>

Reporter::Reporter(std::string toUrl, std::string runId, std::string agent, std::string command)
    : reportUrl(std::move(toUrl)), pid(std::move(runId)), agentId(std::move(agent)),
      action(std::move(command)) {}

void Reporter::progress(int percent, const std::string& message) const {
    send("progress", "", percent, message, "");
}

void Reporter::succeeded(const std::string& message, const std::string& version) const {
    send("finished", "success", 100, message, version);
}

void Reporter::failed(const std::string& message) const { send("finished", "failed", 0, message, ""); }

void Reporter::send(const std::string& event, const std::string& result, int percent,
                    const std::string& message, const std::string& version) const {
    if (reportUrl.empty())
        return;
    try {
        Poco::URI uri(reportUrl);
        const std::pair<const char*, std::string> pairs[] = {
            {"pid", pid},         {"agentId", agentId}, {"action", action},
            {"event", event},     {"result", result},   {"percent", std::to_string(percent)},
            {"message", message}, {"version", version},
        };
        for (const auto& [name, value] : pairs)
            if (!value.empty())
                uri.addQueryParameter(name, value);
        download(uri.toString());
    } catch (const std::exception& exception) {
        logFailure(std::string("A report failed: ") + exception.what());
    }
}
