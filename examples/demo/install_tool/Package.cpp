#include "Package.h"

#include <Poco/String.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t maxVersionLength = 31;
constexpr std::string_view lastLine = "\nEnd of package\n";

std::vector<unsigned long> versionNumbers(const std::string& version) {
    std::vector<unsigned long> numbers;
    std::istringstream stream(version);
    for (std::string number; std::getline(stream, number, '.');)
        numbers.push_back(number.empty() ? 0 : std::stoul(number));
    return numbers;
}

}  // namespace

Package readPackage(std::string content) {
    const auto firstLine = std::string_view(content).substr(0, content.find('\n'));
    const auto version = std::string(firstLine.substr(std::min(productName.size() + 1, firstLine.size())));
    const auto isVersion = !version.empty() && version.size() <= maxVersionLength &&
                           version.find_first_not_of("0123456789.") == std::string::npos;
    if (!firstLine.starts_with(productName) || !isVersion)
        throw std::runtime_error("The downloaded file is not a " + std::string(productName) + " package.");
    if (!content.ends_with(lastLine))
        throw std::runtime_error("The " + std::string(productName) + " package is incomplete.");
    return {version, std::move(content)};
}

std::string fillTemplate(std::string text, const std::string& agentId, const std::string& version,
                         const std::string& targetDir) {
    Poco::replaceInPlace(text, std::string("{{agentId}}"), agentId);
    Poco::replaceInPlace(text, std::string("{{version}}"), version);
    Poco::replaceInPlace(text, std::string("{{targetDir}}"), targetDir);
    return text;
}

bool isOlder(const std::string& left, const std::string& right) {
    return versionNumbers(left) < versionNumbers(right);
}
