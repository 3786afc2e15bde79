#include "platform/gtk/services/PlistReader.h"

#include <Poco/TemporaryFile.h>
#include <gtest/gtest.h>

#include <fstream>

namespace vok::test {

std::optional<Dictionary> read(const std::string& content) {
    const Poco::TemporaryFile file;
    std::ofstream(file.path(), std::ios::binary) << content;
    return PlistReader().dictionaryWithContentsOfFile(file.path());
}

// libplist aborts on reading a UTF-16 string with a zero byte. Key and value here are UTF-16.
TEST(PlistReaderTest, RefusesZeroBytesInBinaryLists) {
    const std::string list("bplist00\xD1\1\2\x61\0\xE4\x61\0\xF6\x08\x0B\x0E\0\0\0\0\0\0\1\1\0\0\0\0\0\0\0\3"
                           "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x11",
                           52);
    EXPECT_EQ(read(list), (Dictionary{{"ä", "ö"}}));
    for (const char letter : {'\xE4', '\xF6'}) {
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

}  // namespace vok::test
