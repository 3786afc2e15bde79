#include "platform/gtk/services/PlistReader.h"

#include <Poco/TemporaryFile.h>
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <fstream>
#include <memory>

namespace vok::test {

namespace {

std::optional<Dictionary> read(const std::string& content) {
    const Poco::TemporaryFile file;
    std::ofstream(file.path(), std::ios::binary) << content;
    return PlistReader().dictionaryWithContentsOfFile(file.path());
}

// libplist aborts on reading a UTF-16 string with a zero byte.
TEST(PlistReaderTest, RefusesZeroBytesInBinaryLists) {
    const std::unique_ptr<void, decltype(&plist_free)> root(plist_new_dict(), plist_free);
    plist_dict_set_item(root.get(), "größe", plist_new_string("Vök"));
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(root.get(), &bytes, &length);
    const std::unique_ptr<char, decltype(&std::free)> owned(bytes, std::free);

    const std::string list(bytes, length);
    EXPECT_EQ(read(list), (Dictionary{{"größe", "Vök"}}));
    for (const char letter : {'g', 'V'}) {
        auto withZeroByte = list;
        withZeroByte[list.find(letter)] = '\0';
        EXPECT_EQ(read(withZeroByte), std::nullopt);
    }
}

std::string xml(const std::string& top) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0">)" + top + "</plist>";
}

/// ASCII `text` as UTF-16 in the byte order given.
std::string utf16(std::string_view text, bool bigEndian) {
    std::string encoded;
    for (const char character : text)
        encoded += bigEndian ? std::string{'\0', character} : std::string{character, '\0'};
    return encoded;
}

TEST(PlistReaderTest, ObeysAByteOrderMark) {
    const auto list = xml("<dict><key>a</key><string>1</string></dict>");
    const Dictionary expected{{"a", "1"}};
    EXPECT_EQ(read("\xEF\xBB\xBF" + xml("<dict><key>ä</key><string>日</string></dict>")),
              (Dictionary{{"ä", "日"}}));
    EXPECT_EQ(read("\xFF\xFE" + utf16(list, false)), expected);
    EXPECT_EQ(read("\xFE\xFF" + utf16(list, true)), expected);
    EXPECT_EQ(read("\xFE\xFF" + utf16(list, false)), std::nullopt);
    EXPECT_EQ(read(utf16(list, true)), std::nullopt) << "without a mark it is not UTF-16";
    EXPECT_EQ(read("\xFF\xFE" + utf16(list, false) + "<"), std::nullopt) << "half a character";
    EXPECT_EQ(read("\xFF\xFE" + utf16("<plist><dict><key>", false) + "\x3D\xD8" +
                   utf16("</key><true/></dict></plist>", false)),
              std::nullopt)
        << "half a surrogate pair";
}

// libplist would recurse until the stack overflows.
TEST(PlistReaderTest, RefusesDeepNesting) {
    std::string content = "<plist><dict><key>a</key>";
    for (int i = 0; i < 200'000; ++i)
        content += "<array>";
    EXPECT_EQ(read(content), std::nullopt);
}

}  // namespace

}  // namespace vok::test
