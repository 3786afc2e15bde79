#include "Download.h"

#include <Poco/Exception.h>
#include <Poco/Net/HTTPClientSession.h>
#include <Poco/Net/HTTPRequest.h>
#include <Poco/Net/HTTPResponse.h>
#include <Poco/StreamCopier.h>
#include <Poco/Timespan.h>
#include <Poco/URI.h>

#include <stdexcept>

using namespace Poco::Net;

std::string download(const std::string& address) {
    try {
        const Poco::URI uri(address);
        if (uri.getScheme() != "http" || uri.getHost().empty())
            throw std::runtime_error("'" + address + "' is not an http address.");
        HTTPClientSession session(uri.getHost(), uri.getPort());
        session.setTimeout(Poco::Timespan(10, 0));
        HTTPRequest request(HTTPRequest::HTTP_GET, uri.getPathEtc().empty() ? "/" : uri.getPathEtc(),
                            HTTPRequest::HTTP_1_1);
        session.sendRequest(request);

        HTTPResponse response;
        std::string content;
        Poco::StreamCopier::copyToString(session.receiveResponse(response), content);
        if (response.getStatus() != HTTPResponse::HTTP_OK) {
            throw std::runtime_error("'" + address + "' cannot be downloaded: the server answered " +
                                     std::to_string(response.getStatus()) + " " + response.getReason() + ".");
        }
        if (response.hasContentLength() &&
            static_cast<std::size_t>(response.getContentLength64()) != content.size())
            throw std::runtime_error("The download of '" + address + "' was cut short.");
        return content;
    } catch (const Poco::Exception& exception) {
        throw std::runtime_error("'" + address + "' cannot be downloaded: " + exception.displayText() + ".");
    }
}
