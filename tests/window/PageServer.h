#pragma once

#include <Poco/Net/HTTPServer.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace vok::test {

/// What the server answers.
struct Answer {
    std::string body = "";
    std::string type = "text/html";        ///< empty: the server hangs up instead of answering
    std::string redirect = "";             ///< path to ask for instead
    std::function<void()> before = [] {};  ///< called on the server's thread, answers when it returns
};

/// The installation pages, on 127.0.0.1. Every request is expected one by one, with its whole query, in which
/// the random "pid" of a run reads PID.
class PageServer {
public:
    /// Has an address, and refuses every connection until it is opened.
    PageServer();
    ~PageServer();
    void open();

    std::string url(const std::string& path) const;

    /// Expects one more request for `path`; several are answered in the order in which they are expected.
    void expect(const std::string& path, Answer answer = {});

    /// How many of the expected requests have not come yet.
    std::size_t missing();
    /// A line for each request that has not come or was not expected.
    std::string faults();

    /// Answers one request; on a thread of the server.
    void handle(Poco::Net::HTTPServerRequest& request, Poco::Net::HTTPServerResponse& response);

private:
    Poco::Net::ServerSocket socket;
    std::unique_ptr<Poco::Net::HTTPServer> server;
    std::mutex mutex;
    std::map<std::string, std::deque<Answer>> expected;  ///< by path
    std::string unexpected;
};

}  // namespace vok::test
