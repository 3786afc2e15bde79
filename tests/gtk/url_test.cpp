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
        {"SemicolonAfterThePort", "http://h:80;v=1/a?b", "http://h:80;v=1/a?b", "b"},
        {"ZeroByte", std::string("http://h/a\0b", 12), {}, {}},
        {"BadPort", "http://h:port/a?b", {}, {}},
        {"BlankInTheQuery", "http://h/a?b=c d", "http://h/a?b=c%20d", "b=c%20d"},
        {"BadEscape", "http://h/a?b=100%", "http://h/a?b=100%", "b=100%"},
    })),
    [](const auto& test) { return test.param.name; });

bool hasQuery(const std::string& text) { return text.find('?') < text.find('#'); }

TEST(OddAddressTest, IsTakenApartOrRefused) {
    const GlibURLParser parser;
    int taken = 0;
    for (const std::string scheme : {"http:", "HTTPS:", "file:", "about:", "x-y:", "", ":", "1:"})
        for (const std::string authority : {"",
                                            "/",
                                            "//",
                                            "///",
                                            "//h",
                                            "//H.",
                                            "//h:",
                                            "//h:80",
                                            "//h:80;v=1",
                                            "//h:65536",
                                            "//h:-1",
                                            "//h;v=1",
                                            "//h;v=1:80",
                                            "//u@h",
                                            "//u:p@h",
                                            "//u;v@h;w",
                                            "//@",
                                            "//:@:",
                                            "//[::1]",
                                            "//[::1]:8",
                                            "//[::1",
                                            "//[v1.x]",
                                            "//[fe80::1%25lo]",
                                            "//h%2f",
                                            "//h%",
                                            "//%41",
                                            "//\xC3\xA4",
                                            "//a b",
                                            "//h\\x",
                                            "//*",
                                            "//h:8x",
                                            "//xn--",
                                            "//a@b@c"})
            for (const std::string path :
                 {"", "/", "//", "/..//h", "/../..", "/.", ";v=1/a", "a", "a:b", "/a b", "/%", "/%zz",
                  "/\xFF", "/\xC3\xA4", "\\a", "/{}|^`\"<>", "/./a/.."})
                for (const std::string rest : {"", "?", "?a=b&c", "?a?b", "?\xC3%C3%", "#", "#f?g", "?q#f"}) {
                    const auto text = scheme + authority + path + rest;
                    const auto url = parser.URLWithString(text);
                    if (!url)
                        continue;
                    ++taken;
                    const auto again = parser.URLWithString(url->absoluteString);
                    ASSERT_TRUE(again) << text;
                    EXPECT_EQ(again->absoluteString, url->absoluteString) << text;
                    EXPECT_EQ(again->query, url->query) << text;
                    EXPECT_EQ(url->query.has_value(), hasQuery(text)) << text;
                }
    EXPECT_GT(taken, 10'000);
}

}  // namespace

}  // namespace vok::test
