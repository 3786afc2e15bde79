#include "RequestHandler.h"
#include "Site.h"

#include <Poco/Net/HTTPServer.h>
#include <Poco/Net/NetException.h>
#include <Poco/Net/ServerSocket.h>
#include <Poco/ThreadPool.h>

#include <charconv>
#include <csignal>
#include <cstdint>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

constexpr auto usage =
    "Usage: vok-demo-site [--port N] [--pages DIR] [--walk SCRIPT]\n"
    "  --port N       port on 127.0.0.1, 8017 by default; 0 takes a free one\n"
    "  --pages DIR    directory of the installation pages\n"
    "  --walk SCRIPT  adds the script to every page and takes orders for it at /walk/order\n";

struct Options {
    std::uint16_t port = 8017;
    std::filesystem::path pages = DEMO_PAGES_DIR;
    std::optional<std::filesystem::path> walkScript;
};

std::uint16_t parsePort(const std::string& text) {
    std::uint16_t port = 0;
    const auto end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, port);
    if (error != std::errc() || rest != end)
        throw std::invalid_argument("'" + text + "' is not a port.");
    return port;
}

Options parseOptions(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; i += 2) {
        const std::string_view name = argv[i];
        if (i + 1 == argc)
            throw std::invalid_argument("'" + std::string(name) + "' is unknown or lacks its value.");
        const std::string value = argv[i + 1];
        if (name == "--port")
            options.port = parsePort(value);
        else if (name == "--pages")
            options.pages = value;
        else if (name == "--walk")
            options.walkScript = value;
        else
            throw std::invalid_argument("'" + std::string(name) + "' is unknown.");
    }
    if (!std::filesystem::is_directory(options.pages))
        throw std::invalid_argument("The pages directory '" + options.pages.string() + "' does not exist.");
    return options;
}

/// The signals that end the server. Blocked before the first server thread starts, so that only `main`
/// receives them.
sigset_t blockEndSignals() {
    std::signal(SIGPIPE, SIG_IGN);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

Poco::Net::ServerSocket listenOn(std::uint16_t port) {
    try {
        Poco::Net::ServerSocket socket;
        socket.bind({"127.0.0.1", port}, true, false);
        socket.listen(64);
        return socket;
    } catch (const Poco::Net::NetException& exception) {
        throw std::runtime_error("Port " + std::to_string(port) + " of 127.0.0.1 cannot be used (" +
                                 exception.message() + "); --port 0 takes a free one.");
    }
}

void serve(const Options& options) {
    const auto signals = blockEndSignals();
    const auto socket = listenOn(options.port);

    Site site;
    site.pages = options.pages;
    site.walkScript = options.walkScript;

    auto params = Poco::makeAuto<Poco::Net::HTTPServerParams>();
    params->setKeepAlive(false);
    params->setMaxThreads(16);
    Poco::ThreadPool threads(2, 16);
    Poco::Net::HTTPServer server(Poco::makeShared<RequestHandlerFactory>(site), threads, socket, params);
    server.start();
    std::cout << "Demo site: http://127.0.0.1:" << socket.address().port() << '/' << std::endl;

    int signal = 0;
    sigwait(&signals, &signal);
    site.walk.close();
    server.stopAll(true);
    threads.joinAll();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        serve(parseOptions(argc, argv));
        return 0;
    } catch (const std::invalid_argument& exception) {
        std::cerr << "vok-demo-site: " << exception.what() << '\n' << usage;
        return 2;
    } catch (const std::exception& exception) {
        std::cerr << "vok-demo-site: " << exception.what() << '\n';
    }
    return 1;
}
