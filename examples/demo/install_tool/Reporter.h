#pragma once

#include <string>

/// Reports progress to the installation site: a GET of the report URL with `pid`, `agentId`, `action`,
/// `event` and more in its query. A report that fails is logged and otherwise ignored.
class Reporter {
public:
    /// The command in lower case becomes `action`. An empty URL sends nothing.
    Reporter(std::string toUrl, std::string runId, std::string agent, std::string command);

    /// `event=progress` with `percent` (0 to 100) and `message`, a short phrase naming the step.
    void progress(int percent, const std::string& message) const;
    /// `event=finished`, `result=success` with the version now installed, empty for none.
    void succeeded(const std::string& message, const std::string& version) const;
    /// `event=finished`, `result=failed` with the reason for the user.
    void failed(const std::string& message) const;

private:
    void send(const std::string& event, const std::string& result, int percent, const std::string& message,
              const std::string& version) const;

    std::string reportUrl;
    std::string pid;
    std::string agentId;
    std::string action;
};
