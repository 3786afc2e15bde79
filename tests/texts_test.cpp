#include "platform/shared/ErrorPage.h"

#include <gtest/gtest.h>

namespace vok::test {

class TextsTest : public testing::Test {
protected:
    void TearDown() override { useLanguage("en"); }
};

TEST_F(TextsTest, TakesTheNearestLanguage) {
    const std::pair<std::string, std::vector<std::string>> rows[] = {
        {"de", {"de", "de-AT", "DE_at"}},
        {"pt-BR", {"pt-BR", "pt"}},
        {"es", {"es-419"}},
        {"zh-CN", {"zh", "zh-Hans", "zh-Hans-TW"}},
        {"ar", {"ar-EG"}},
        {"en", {"en-GB", "zh-Hant", "zh-TW", "zh-HK", "zh-MO", "da", "", "d", "deu", "German"}},
    };
    for (const auto& [language, codes] : rows)
        for (const auto& code : codes) {
            useLanguage(code);
            EXPECT_EQ(languageInUse(), language) << code;
            EXPECT_EQ(isRightToLeft(), language == "ar") << code;
            EXPECT_EQ(translated(texts::cancel) == "Cancel", language == "en") << code;
        }
}

TEST_F(TextsTest, KnowsLanguageCodes) {
    for (const auto* const code : {"en", "pt-BR", "zh_Hans", "es-419"})
        EXPECT_TRUE(isLanguageCode(code)) << code;
    for (const auto* const code : {"", "en;q=1", "en GB", "größe"})
        EXPECT_FALSE(isLanguageCode(code)) << code;
}

std::string textOf(const std::string& page, const std::string& begin, const std::string& end) {
    const auto from = page.find(begin);
    if (from == page.npos)
        return "nothing";
    return page.substr(from + begin.size(), page.find(end, from + begin.size()) - from - begin.size());
}

std::string headingFor(const std::string& url) {
    return textOf(errorPage({url, texts::noAnswer}, "log"), "<h1>", "</h1>");
}

TEST_F(TextsTest, ErrorPageLeadsWithTheHost) {
    EXPECT_EQ(headingFor("https://user:p@pages.example:8080/a?b#c"),
              "The page at <bdi>pages.example:8080</bdi> could not be loaded");
    EXPECT_EQ(headingFor("http://h?a@b"), "The page at <bdi>h</bdi> could not be loaded");
    for (const auto* const url : {"file:///tmp/splash.html", "tel:123", "://", ""})
        EXPECT_EQ(headingFor(url), "This page could not be loaded") << url;
}

TEST_F(TextsTest, ErrorPageShowsItsStringsAsTheyAre) {
    const std::string url = "http://h/{{reason}}?a=1&b=\"</textarea><i>";
    const std::string escaped = "http://h/{{reason}}?a=1&amp;b=&quot;&lt;/textarea&gt;&lt;i&gt;";
    const auto page = errorPage({url, FailureReason("<script>no</script> & more")}, "show 'a' & b");
    EXPECT_EQ(textOf(page, "onfocus=\"setTimeout(() => this.select())\">", "</textarea>"), escaped);
    EXPECT_EQ(textOf(page, "<a id=\"try-again\" href=\"", "\""), escaped);
    EXPECT_EQ(textOf(page, "<code>", "</code>"), "show 'a' &amp; b");
    EXPECT_EQ(textOf(page, "<p class=\"reason\"><bdi>", "</bdi>"),
              "&lt;script&gt;no&lt;/script&gt; &amp; more");
}

TEST_F(TextsTest, ErrorPageOffersWhatItIsTold) {
    const auto page = errorPage({"http://h/", texts::noAnswer, false, "file:///a b/splash.html"}, "log");
    EXPECT_EQ(textOf(page, "<nav>", "</nav>"),
              "<a id=\"start-again\" href=\"file:///a b/splash.html\">Start again</a>\n");
    EXPECT_EQ(textOf(page, "<p class=\"advice\">", "<"), "Start again from the first page.");
}

TEST_F(TextsTest, ErrorPageIsInTheLanguageInUseAndTheLogIsNot) {
    useLanguage("ar");
    const FailureReason reason(texts::typeNotSupported, "application/zip");
    EXPECT_EQ(reason.shown, "لا يمكن فتح الملفات من النوع application/zip هنا.");
    EXPECT_EQ(reason.logged, "Files of type application/zip cannot be opened here.");
    const auto page = errorPage({"http://h/", reason}, "log");
    EXPECT_NE(page.find("<html lang=\"ar\" dir=\"rtl\">"), page.npos);
    EXPECT_EQ(textOf(page, "<summary>", "<"), "التفاصيل");
}

}  // namespace vok::test
