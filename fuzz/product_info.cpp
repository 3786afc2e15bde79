// Reads a product info record from any output of the install tool, into a version buffer of any size. The
// first byte of the input is the size of the buffer, the rest is the output.
//
// Only a std::exception is raised. The flag and the buffer are written only when 0 is returned, and then the
// version in the buffer is zero-terminated. Output before the line is ignored. A record of a flag and a
// version, written by JsonCpp, is read as written if the buffer is large enough.

#include "Property.h"
#include "commands/ProductInfo.h"

#include <json/json.h>

#include <algorithm>
#include <exception>
#include <vector>

using namespace vok;
using namespace vok::fuzz;

namespace {

constexpr std::int32_t untouchedFlag = 77;

struct Reading {
    explicit Reading(std::size_t bufferSize) : version(bufferSize, '#') {}
    bool operator==(const Reading&) const = default;

    std::int32_t code = -1;
    std::int32_t installed = untouchedFlag;
    std::vector<char> version;
};

Reading read(const std::string& output, std::size_t bufferSize) {
    Reading reading(bufferSize);
    try {
        reading.code = ReadProductInfo(output, &reading.installed, reading.version.data(),
                                       static_cast<std::uint32_t>(bufferSize));
    } catch (const std::exception&) {
        reading.code = -1;
    }
    return reading;
}

std::string infoLine(std::int32_t installed, const std::string& version) {
    Json::Value record;
    record["installed"] = installed;
    record["version"] = version;
    return "Install info {" + Json::writeString(Json::StreamWriterBuilder(), record) + "}\n";
}

/// The result of reading a record with `installed` and `version`.
Reading expected(std::int32_t installed, const std::string& version, std::size_t bufferSize) {
    Reading reading(bufferSize);
    if (bufferSize > 0 && version.size() >= bufferSize)
        return reading;
    reading.code = 0;
    reading.installed = installed;
    if (bufferSize > 0)
        std::copy_n(version.c_str(), version.size() + 1, reading.version.begin());
    return reading;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::size_t bufferSize = data[0];
    const std::string output(reinterpret_cast<const char*>(data) + 1, size - 1);

    const auto reading = read(output, bufferSize);
    const Reading untouched(bufferSize);
    require(reading.code == 0 || reading == untouched, "a failure leaves flag and version alone");
    require(reading.version == untouched.version || std::ranges::count(reading.version, '\0') > 0,
            "a version ends within its buffer");
    require(read("noise\n" + output, bufferSize) == reading, "what stands before the line does not matter");

    const auto installed = static_cast<std::int32_t>(size) - 100;
    if (isUtf8(output))
        require(read(infoLine(installed, output), bufferSize) == expected(installed, output, bufferSize),
                "a record is read as it was written");
    return 0;
}
