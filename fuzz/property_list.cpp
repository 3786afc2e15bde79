// Reads any bytes as a property list file.
//
// The strings of a dictionary are UTF-8, and it is the same after libplist has written it to a file as
// strings.

#include "Property.h"
#include "platform/gtk/services/PlistReader.h"

#include <plist/plist.h>
#include <sys/mman.h>
#include <unistd.h>

#include <memory>

using namespace vok;
using namespace vok::fuzz;

namespace {

/// The result of reading a file with `contents`.
std::optional<Dictionary> read(std::string_view contents) {
    static const int file = memfd_create("property list", 0);
    static const auto path = "/proc/self/fd/" + std::to_string(file);
    const bool written = ftruncate(file, 0) == 0 && pwrite(file, contents.data(), contents.size(), 0) ==
                                                        static_cast<ssize_t>(contents.size());
    require(written, "the input can be written to a file");
    return PlistReader().dictionaryWithContentsOfFile(path);
}

std::string asPropertyList(const Dictionary& dictionary) {
    const std::unique_ptr<void, decltype(&plist_free)> root(plist_new_dict(), plist_free);
    for (const auto& [key, text] : dictionary)
        plist_dict_set_item(root.get(), key.c_str(), plist_new_string(text.c_str()));
    char* xml = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root.get(), &xml, &length);
    const std::unique_ptr<char, decltype(&std::free)> owned(xml, std::free);
    return {xml, length};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto dictionary = read({reinterpret_cast<const char*>(data), size});
    if (!dictionary)
        return 0;
    for (const auto& [key, text] : *dictionary)
        require(isUtf8(key) && isUtf8(text), "keys and texts are UTF-8");
    require(read(asPropertyList(*dictionary)) == dictionary, "a dictionary is read as it was written");
    return 0;
}
