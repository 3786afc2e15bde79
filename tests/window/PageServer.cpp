#include "PageServer.h"

#include <Poco/Net/HTTPRequestHandler.h>
#include <Poco/Net/HTTPRequestHandlerFactory.h>
#include <Poco/Net/HTTPServerRequestImpl.h>
#include <Poco/Net/HTTPServerResponse.h>

#include <regex>

namespace vok::test {

namespace {

using namespace Poco::Net;

struct Handler final : HTTPRequestHandler {
    explicit Handler(PageServer& pages) : server(pages) {}
    void handleRequest(HTTPServerRequest& request, HTTPServerResponse& response) override {
        server.handle(request, response);
    }
    PageServer& server;
};

struct Handlers final : HTTPRequestHandlerFactory {
    explicit Handlers(PageServer& pages) : server(pages) {}
    HTTPRequestHandler* createRequestHandler(const HTTPServerRequest&) override {
        return new Handler(server);
    }
    PageServer& server;
};

}  // namespace

PageServer::PageServer() { socket.bind(SocketAddress("127.0.0.1", 0)); }

PageServer::~PageServer() {
    if (server)
        server->stopAll(true);
}

void PageServer::open() {
    socket.listen();
    // Nobody asks a second time when the server hangs up on a connection that is not kept.
    Poco::AutoPtr params(new HTTPServerParams);
    params->setKeepAlive(false);
    server = std::make_unique<HTTPServer>(new Handlers(*this), socket, params);
    server->start();
}

std::string PageServer::url(const std::string& path) const {
    return "http://" + socket.address().toString() + path;
}

void PageServer::expect(const std::string& path, Answer answer) {
    const std::lock_guard lock(mutex);
    expected[path].push_back(std::move(answer));
}

std::size_t PageServer::missing() {
    const std::lock_guard lock(mutex);
    std::size_t count = 0;
    for (const auto& [path, answers] : expected)
        count += answers.size();
    return count;
}

std::string PageServer::faults() {
    const std::lock_guard lock(mutex);
    auto faults = unexpected;
    for (const auto& [path, answers] : expected)
        if (!answers.empty())
            faults += "missing: " + path + "\n";
    return faults;
}

void PageServer::handle(HTTPServerRequest& request, HTTPServerResponse& response) {
    static const std::regex pid("pid=[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}");
    const auto path = std::regex_replace(request.getURI(), pid, "pid=PID");
    Answer answer;
    {
        const std::lock_guard lock(mutex);
        auto& answers = expected[path];
        if (answers.empty()) {
            unexpected += "not expected: " + path + "\n";
        } else {
            answer = std::move(answers.front());
            answers.pop_front();
        }
    }
    answer.before();
    if (answer.type.empty()) {
        dynamic_cast<HTTPServerRequestImpl&>(request).socket().shutdown();
        return;
    }
    if (!answer.redirect.empty()) {
        response.redirect(answer.redirect);
        return;
    }
    response.setContentType(answer.type + "; charset=utf-8");
    response.sendBuffer(answer.body.data(), answer.body.size());
}

}  // namespace vok::test
