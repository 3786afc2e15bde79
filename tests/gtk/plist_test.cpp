#include "platform/gtk/services/PlistReader.h"

#include <Poco/TemporaryFile.h>
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <fstream>
#include <memory>

namespace vok::test {

namespace {

class PlistReaderTest : public testing::Test {
protected:
    std::optional<Dictionary> read(const std::string& content) {
        std::ofstream(file.path(), std::ios::binary) << content;
        return reader.dictionaryWithContentsOfFile(file.path());
    }

    static std::string xml(const std::string& top) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\">" + top + "</plist>";
    }

    Poco::TemporaryFile file;
    PlistReader reader;
};

TEST_F(PlistReaderTest, GivesEveryValueAsText) {
    const auto list = read(xml(R"(<dict>
        <key>entities</key><string>a=1&amp;b=&lt;2&gt; &#228;</string>
        <key>ключ ü</key><string>日本 ü</string>
        <key>empty</key><string></string>
        <key>closed</key><string/>
        <key>yes</key><true/>
        <key>no</key><false/>
        <key>integer</key><integer>42</integer>
        <key>negative</key><integer>-7</integer>
        <key>long</key><integer>5000000000</integer>
        <key>real</key><real>0.1</real>
        <key>whole</key><real>-3.0</real></dict>)"));
    EXPECT_EQ(list, (Dictionary{{"entities", "a=1&b=<2> ä"},
                                {"ключ ü", "日本 ü"},
                                {"empty", ""},
                                {"closed", ""},
                                {"yes", "1"},
                                {"no", "0"},
                                {"integer", "42"},
                                {"negative", "-7"},
                                {"long", "5000000000"},
                                {"real", "0.1"},
                                {"whole", "-3"}}));
}

TEST_F(PlistReaderTest, GivesDatesAndCollectionsAsTheirSource) {
    const auto list =
        read(xml("<dict><key>date</key><date>2024-02-29T12:00:00Z</date>"
                 "<key>nested</key><dict><key>inner</key><array><true/></array></dict></dict>"));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->size(), 2u);
    EXPECT_NE(list->at("date").find("2024-02-29T12:00:00Z"), std::string::npos) << list->at("date");
    EXPECT_NE(list->at("nested").find("<key>inner</key>"), std::string::npos) << list->at("nested");
}

TEST_F(PlistReaderTest, ReadsBinaryLists) {
    const std::unique_ptr<void, decltype(&plist_free)> root(plist_new_dict(), plist_free);
    plist_dict_set_item(root.get(), "name", plist_new_string("Vök"));
    plist_dict_set_item(root.get(), "größe", plist_new_bool(1));
    plist_dict_set_item(root.get(), "count", plist_new_uint(300));
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(root.get(), &bytes, &length);
    const std::unique_ptr<char, decltype(&std::free)> owned(bytes, std::free);

    const std::string list(bytes, length);
    EXPECT_EQ(read(list), (Dictionary{{"name", "Vök"}, {"größe", "1"}, {"count", "300"}}));
    EXPECT_EQ(read(list.substr(0, length / 2)), std::nullopt);
    for (const char letter : {'g', 'V'}) {
        auto withZeroByte = list;
        withZeroByte[list.find(letter)] = '\0';
        EXPECT_EQ(read(withZeroByte), std::nullopt);
    }
}

/// ASCII `text` as UTF-16 in the byte order given.
std::string utf16(std::string_view text, bool bigEndian) {
    std::string encoded;
    for (const char character : text)
        encoded += bigEndian ? std::string{'\0', character} : std::string{character, '\0'};
    return encoded;
}

TEST_F(PlistReaderTest, ObeysAByteOrderMark) {
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

std::string nestedArrays(int depth) {
    std::string content = "<plist><dict><key>a</key>";
    for (int i = 0; i < depth; ++i)
        content += "<array>";
    return content;
}

TEST_F(PlistReaderTest, GivesNothingForWhatIsNoDictionary) {
    EXPECT_EQ(read(xml("<dict/>")), Dictionary());
    for (const auto& content :
         {std::string(), std::string("garbage"), std::string("<html><p>1</html>"),
          xml("<array><string>a</string></array>"), xml("<string>a</string>"),
          std::string("bplist00 and no more"), std::string(1000, '\0'), nestedArrays(200'000),
          xml("<dict><key>\xE4</key><true/></dict>"), xml("<dict><key>a</key><string>\xE4</string></dict>")})
        EXPECT_EQ(read(content), std::nullopt) << content.substr(0, 100);
    EXPECT_EQ(reader.dictionaryWithContentsOfFile(file.path() + ".missing"), std::nullopt);
    EXPECT_EQ(reader.dictionaryWithContentsOfFile("/"), std::nullopt);
}

}  // namespace

}  // namespace vok::test
