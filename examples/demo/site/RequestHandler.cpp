#include "RequestHandler.h"

#include "Files.h"

#include <Poco/JSONString.h>

#include <algorithm>
#include <array>

using Poco::Net::HTTPResponse;
using namespace std::chrono_literals;

void RequestHandler::handleRequest(Poco::Net::HTTPServerRequest& request,
                                   Poco::Net::HTTPServerResponse& reply) {
    const auto& uri = request.getURI();
    const auto mark = std::min(uri.find('?'), uri.size());
    path = percentDecoded(uri.substr(0, mark));
    query = parseQuery(mark < uri.size() ? uri.substr(mark + 1) : std::string());
    method = request.getMethod();
    response = &reply;
    try {
        answer();
    } catch (const std::exception& exception) {
        site.journal.write("fault", path + ": " + exception.what());
        if (!reply.sent())
            sendText(exception.what(), HTTPResponse::HTTP_INTERNAL_SERVER_ERROR);
    }
}

void RequestHandler::answer() {
    struct Route {
        std::string_view path;
        void (RequestHandler::*answer)();
        bool walkOnly = false;
    };
    static constexpr auto routes = std::to_array<Route>({
        {"/command", &RequestHandler::answerCommand},
        {"/report", &RequestHandler::answerReport},
        {"/progress", &RequestHandler::answerProgress},
        {"/walk/order", &RequestHandler::answerWalkOrder, true},
        {"/walk/next", &RequestHandler::answerWalkNext, true},
        {"/walk/answer", &RequestHandler::answerWalkAnswer, true},
        {"/walk/state", &RequestHandler::answerWalkState, true},
        {"/walk/release", &RequestHandler::answerWalkRelease, true},
    });
    if (method != "GET" && method != "HEAD") {
        sendText("Only GET is supported.", HTTPResponse::HTTP_METHOD_NOT_ALLOWED);
        return;
    }
    const auto route = std::ranges::find(routes, path, &Route::path);
    if (route == routes.end() || (route->walkOnly && !site.walkScript))
        answerFile();
    else
        (this->*route->answer)();
}

void RequestHandler::answerCommand() {
    site.journal.write("command", findInQuery(query, "command") + ' ' + queryText(query, {"command"}));
    sendFile(site.pages / "working.html", HTTPResponse::HTTP_OK);
}

void RequestHandler::answerReport() {
    site.progress.store(query);
    const auto outcome = findInQuery(query, "event") == "finished" ? findInQuery(query, "result")
                                                                   : findInQuery(query, "percent") + " %";
    site.journal.write("report",
                       findInQuery(query, "action") + ' ' + outcome + ' ' + findInQuery(query, "message"));
    sendText("", HTTPResponse::HTTP_OK);
}

void RequestHandler::answerProgress() {
    ++site.polls;
    send(site.progress.toJson(findInQuery(query, "job")), "application/json", HTTPResponse::HTTP_OK);
}

void RequestHandler::answerFile() {
    if (path == "/")
        path = "/welcome.html";
    if (const auto file = findFile(site.pages, path)) {
        noteVisit();
        sendFile(*file, HTTPResponse::HTTP_OK);
        return;
    }
    site.journal.write("missing", path);
    sendFile(site.pages / "missing.html", HTTPResponse::HTTP_NOT_FOUND);
}

/// Logs the request for a page or package, but not for styles and scripts. During a walk the first request of
/// the program waits for the driver's release, so that the splash page stays visible for its picture.
void RequestHandler::noteVisit() const {
    const auto name = path.substr(1);
    if (name.starts_with("payload/")) {
        site.journal.write("download", name);
    } else if (!name.ends_with(".html")) {
        return;
    } else if (queryHas(query, "event") && queryHas(query, "action")) {
        const auto text = "action=" + findInQuery(query, "action") +
                          " result=" + findInQuery(query, "result") + ' ' +
                          queryText(query, {"action", "event", "result"}) + " -> " + name;
        site.journal.write("callback", text);
    } else {
        site.journal.write(queryHas(query, "os") ? "start" : "page", name + ' ' + queryText(query));
        if (queryHas(query, "os") && site.walkScript)
            site.walk.waitForRelease(60s);
    }
}

void RequestHandler::answerWalkOrder() {
    WalkOrders::Order order{.page = findInQuery(query, "page"),
                            .action = findInQuery(query, "action"),
                            .selector = findInQuery(query, "selector")};
    const auto done = site.walk.perform(order, 30s);
    if (!done) {
        sendText("'" + order.page + "' did not answer; the page shown is '" + site.walk.currentPage() + "'.",
                 HTTPResponse::HTTP_GATEWAY_TIMEOUT);
    } else {
        sendText(done->text, done->obeyed ? HTTPResponse::HTTP_OK : HTTPResponse::HTTP_CONFLICT);
    }
}

void RequestHandler::answerWalkNext() {
    const auto order = site.walk.next(findInQuery(query, "page"), findInQuery(query, "token"), 20s);
    send(order ? "{\"number\": " + std::to_string(order->number) + ", \"action\": " +
                     Poco::toJSON(order->action) + ", \"selector\": " + Poco::toJSON(order->selector) + "}"
               : "{}",
         "application/json", HTTPResponse::HTTP_OK);
}

void RequestHandler::answerWalkAnswer() {
    site.walk.answer(std::stoi(findInQuery(query, "number")),
                     {findInQuery(query, "obeyed") == "yes", findInQuery(query, "text")});
    sendText("", HTTPResponse::HTTP_OK);
}

void RequestHandler::answerWalkState() {
    sendText("page=" + site.walk.currentPage() + "\npolls=" + std::to_string(site.polls) + "\n",
             HTTPResponse::HTTP_OK);
}

void RequestHandler::answerWalkRelease() {
    site.walk.releaseFirstPage();
    sendText("", HTTPResponse::HTTP_OK);
}

void RequestHandler::sendFile(const std::filesystem::path& file, HTTPResponse::HTTPStatus status) {
    const auto type = mediaType(file);
    const bool isPage = type.starts_with("text/html");
    auto body = isPage ? readPage(file) : readFile(file);
    const auto end = body.rfind("</body>");
    if (site.walkScript && isPage && end != std::string::npos)
        body.insert(end, "<script>\n" + readFile(*site.walkScript) + "</script>\n");
    send(body, type, status);
}

void RequestHandler::sendText(const std::string& text, HTTPResponse::HTTPStatus status) {
    send(text, "text/plain; charset=utf-8", status);
}

void RequestHandler::send(const std::string& body, std::string_view mediaType,
                          HTTPResponse::HTTPStatus status) {
    response->setStatusAndReason(status);
    response->setContentType(std::string(mediaType));
    response->set("Cache-Control", "no-store");
    response->set("Content-Security-Policy", "default-src 'self' 'unsafe-inline'; img-src 'self' data:");
    response->set("X-Content-Type-Options", "nosniff");
    response->sendBuffer(body.data(), method == "HEAD" ? 0 : body.size());
}
