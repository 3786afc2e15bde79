#include "contract/Backend.h"

#include <Poco/TemporaryFile.h>
#include <gtest/gtest.h>

#include <fstream>

namespace vok::test {

class PropertyListReaderTest : public testing::Test {
protected:
    std::optional<Dictionary> read(const std::string& content) {
        std::ofstream(file.path(), std::ios::binary) << content;
        return backend().propertyLists.dictionaryWithContentsOfFile(file.path());
    }

    static std::string xml(const std::string& top) {
        return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0">)" + top + "</plist>";
    }

    Poco::TemporaryFile file;
};

TEST_F(PropertyListReaderTest, GivesEveryValueAsText) {
    const struct {
        std::string key, value, text;
    } rows[] = {
        {"entities", "<string>a=1&amp;b=&lt;2&gt; &#228;</string>", "a=1&b=<2> ä"},
        {"ключ ü", "<string>日本 ü</string>", "日本 ü"},
        {"empty", "<string></string>", ""},
        {"closed", "<string/>", ""},
        {"yes", "<true/>", "1"},
        {"no", "<false/>", "0"},
        {"integer", "<integer>42</integer>", "42"},
        {"negative", "<integer>-7</integer>", "-7"},
        {"long", "<integer>5000000000</integer>", "5000000000"},
        {"real", "<real>0.1</real>", "0.1"},
        {"precise", "<real>12345.6789</real>", "12345.6789"},
        {"whole", "<real>-3.0</real>", "-3"},
    };
    std::string list;
    Dictionary expected;
    for (const auto& [key, value, text] : rows) {
        list.append("<key>").append(key).append("</key>").append(value);
        expected[key] = text;
    }
    EXPECT_EQ(read(xml("<dict>" + list + "</dict>")), expected);
}

TEST_F(PropertyListReaderTest, GivesDatesAndCollectionsAsTheirSource) {
    const auto list =
        read(xml("<dict><key>date</key><date>2024-02-29T12:00:00Z</date>"
                 "<key>nested</key><dict><key>inner</key><array><true/></array></dict></dict>"));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->size(), 2u);
    EXPECT_NE(list->at("date").find(backend().date), std::string::npos) << list->at("date");
    EXPECT_NE(list->at("nested").find(backend().innerKey), std::string::npos) << list->at("nested");
}

/// {"count": 300, "größe": true, "name": "Vök"}
constexpr unsigned char binaryList[] = {
    0x62, 0x70, 0x6C, 0x69, 0x73, 0x74, 0x30, 0x30, 0xD3, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06,
    0x55, 0x63, 0x6F, 0x75, 0x6E, 0x74, 0x65, 0x00, 0x67, 0x00, 0x72, 0x00, 0xF6, 0x00, 0xDF,
    0x00, 0x65, 0x54, 0x6E, 0x61, 0x6D, 0x65, 0x11, 0x01, 0x2C, 0x09, 0x63, 0x00, 0x56, 0x00,
    0xF6, 0x00, 0x6B, 0x08, 0x0F, 0x15, 0x20, 0x25, 0x28, 0x29, 0x00, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x01, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x07, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x30,
};

TEST_F(PropertyListReaderTest, ReadsBinaryLists) {
    const std::string list(std::begin(binaryList), std::end(binaryList));
    EXPECT_EQ(read(list), (Dictionary{{"name", "Vök"}, {"größe", "1"}, {"count", "300"}}));
    EXPECT_EQ(read(list.substr(0, list.size() / 2)), std::nullopt);
}

TEST_F(PropertyListReaderTest, GivesNothingForWhatIsNoDictionary) {
    EXPECT_EQ(read(xml("<dict/>")), Dictionary());
    for (const auto& content :
         {std::string(), std::string("garbage"), std::string("<html><p>1</html>"),
          xml("<array><string>a</string></array>"), xml("<string>a</string>"),
          std::string("bplist00 and no more"), std::string(1000, '\0'),
          xml("<dict><key>\xE4</key><true/></dict>"), xml("<dict><key>a</key><string>\xE4</string></dict>")})
        EXPECT_EQ(read(content), std::nullopt) << content.substr(0, 100);
    EXPECT_EQ(backend().propertyLists.dictionaryWithContentsOfFile(file.path() + ".missing"), std::nullopt);
    EXPECT_EQ(backend().propertyLists.dictionaryWithContentsOfFile("/"), std::nullopt);
}

}  // namespace vok::test
