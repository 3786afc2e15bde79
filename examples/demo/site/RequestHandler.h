#pragma once

#include "Query.h"
#include "Site.h"

#include <Poco/Net/HTTPRequestHandler.h>
#include <Poco/Net/HTTPRequestHandlerFactory.h>
#include <Poco/Net/HTTPServerRequest.h>
#include <Poco/Net/HTTPServerResponse.h>

#include <memory>
#include <string>

/// Answers one request of a page, of the program's web view or of the install tool.
///
/// | Path                | Answer                                                                        |
/// |---------------------|-------------------------------------------------------------------------------|
/// | /command            | the page that is shown while the program runs the command of its query        |
/// | /report             | nothing; the install tool's report is stored under its `job`                  |
/// | /progress           | the last report of `job` as JSON                                              |
/// | /walk/...           | for the driver of a walk and its page script; only during a walk              |
/// | anything else       | the file of that name in the pages directory                                  |
class RequestHandler : public Poco::Net::HTTPRequestHandler {
public:
    /// `shared` outlives the handler.
    explicit RequestHandler(Site& shared) : site(shared) {}

    void handleRequest(Poco::Net::HTTPServerRequest& request,
                       Poco::Net::HTTPServerResponse& response) override;

private:
    void answer();
    void answerCommand();
    void answerReport();
    void answerProgress();
    void answerFile();

    void answerWalkOrder();
    void answerWalkNext();
    void answerWalkAnswer();
    void answerWalkState();
    void answerWalkRelease();

    void noteVisit() const;
    void sendFile(const std::filesystem::path& file, Poco::Net::HTTPResponse::HTTPStatus status);
    void sendText(const std::string& text, Poco::Net::HTTPResponse::HTTPStatus status);
    void send(const std::string& body, std::string_view mediaType,
              Poco::Net::HTTPResponse::HTTPStatus status);

    Site& site;
    Poco::Net::HTTPServerResponse* response = nullptr;
    std::string method;
    std::string path;  ///< decoded
    Query query;
};

/// Makes a handler for every request. `shared` outlives the server.
class RequestHandlerFactory : public Poco::Net::HTTPRequestHandlerFactory {
public:
    explicit RequestHandlerFactory(Site& shared) : site(shared) {}

    Poco::Net::HTTPRequestHandler* createRequestHandler(const Poco::Net::HTTPServerRequest&) override {
        return std::make_unique<RequestHandler>(site).release();
    }

private:
    Site& site;
};
