#include "platform/FailurePage.h"
#include "platform/gtk/services/GlibURLParser.h"

#include <gtest/gtest.h>

#include <array>

namespace vok::test {

namespace {

struct Row {
    const char* name;
    std::string text;
    std::optional<std::string> absoluteString;  ///< nothing when the text is no URL
    std::optional<std::string> query;

    friend void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }
};

class GlibURLParserTest : public testing::TestWithParam<Row> {};

TEST_P(GlibURLParserTest, TakesTheTextApart) {
    const auto url = GlibURLParser().URLWithString(GetParam().text);
    ASSERT_EQ(url.has_value(), GetParam().absoluteString.has_value());
    if (url) {
        EXPECT_EQ(url->absoluteString, GetParam().absoluteString);
        EXPECT_EQ(url->query, GetParam().query);
    }
}

const std::string longQuery(40'000, 'q');

INSTANTIATE_TEST_SUITE_P(
    Texts, GlibURLParserTest,
    testing::ValuesIn(std::to_array<Row>({
        {"WithoutQuery", "http://h/a", "http://h/a", {}},
        {"WithQuery", "http://h/a?b=c&d", "http://h/a?b=c&d", "b=c&d"},
        {"EmptyQuery", "http://h/a?", "http://h/a?", ""},
        {"SecondQuestionMark", "http://h/a?b?c", "http://h/a?b?c", "b?c"},
        {"Fragment", "http://h/a?b#c", "http://h/a?b#c", "b"},
        {"QueryInTheFragment", "http://h/a#b?c", "http://h/a#b?c", {}},
        {"RelativeReference", "back.html?step=3", "back.html?step=3", "step=3"},
        {"Empty", "", "", {}},
        {"SchemeAndHostInCapitals", "HTTP://Host.Example/A?B", "http://host.example/A?B", "B"},
        {"NoPath", "http://h", "http://h/", {}},
        {"DefaultPort", "http://h:80/a", "http://h/a", {}},
        {"EscapesStay", "http://h/%41%2fb?c=%26%20d", "http://h/%41%2fb?c=%26%20d", "c=%26%20d"},
        {"BracketsInTheQuery", "http://h/a?type[0]=b", "http://h/a?type[0]=b", "type[0]=b"},
        {"NonAscii", "http://h/ä?b=ü", "http://h/%C3%A4?b=%C3%BC", "b=%C3%BC"},
        {"LongQuery", "http://h/a?" + longQuery, "http://h/a?" + longQuery, longQuery},
        {"File", "file:///a%20b/c.html", "file:///a%20b/c.html", {}},
        {"PathLikeAHost", "http:/..//h/a?b", "http:/..//h/a?b", "b"},
        {"ZeroByte", std::string("http://h/a\0b", 12), {}, {}},
        {"BadPort", "http://h:port/a?b", {}, {}},
        {"BlankInTheQuery", "http://h/a?b=c d", "http://h/a?b=c%20d", "b=c%20d"},
        {"BadEscape", "http://h/a?b=100%", "http://h/a?b=100%", "b=100%"},
    })),
    [](const auto& test) { return test.param.name; });

TEST(FailurePageTest, ShowsItsTextsAsTheyStand) {
    const auto page = failurePage("http://h/?a=1&b=\"<i>", "<script>no</script> & more");
    EXPECT_NE(page.find("<dd>http://h/?a=1&amp;b=&quot;&lt;i&gt;</dd>"), std::string::npos);
    EXPECT_NE(page.find("href=\"http://h/?a=1&amp;b=&quot;&lt;i&gt;\""), std::string::npos);
    EXPECT_NE(page.find("<dd>&lt;script&gt;no&lt;/script&gt; &amp; more</dd>"), std::string::npos);
}

}  // namespace

}  // namespace vok::test
