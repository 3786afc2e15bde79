#include "contract/Backend.h"

#include <gtest/gtest.h>

namespace vok::test {

const std::string longQuery(40'000, 'q');

struct Row {
    const char* name;
    std::string text;
    std::optional<URL> url;  ///< nothing when the text is not a URL
};

const Row rows[] = {
    {"WithoutQuery", "http://h/a", URL{"http://h/a", {}}},
    {"WithQuery", "http://h/a?b=c&d", URL{"http://h/a?b=c&d", "b=c&d"}},
    {"EmptyQuery", "http://h/a?", URL{"http://h/a?", ""}},
    {"SecondQuestionMark", "http://h/a?b?c", URL{"http://h/a?b?c", "b?c"}},
    {"Fragment", "http://h/a?b#c", URL{"http://h/a?b#c", "b"}},
    {"QueryInTheFragment", "http://h/a#b?c", URL{"http://h/a#b?c", {}}},
    {"RelativeReference", "back.html?step=3", URL{"back.html?step=3", "step=3"}},
    {"Empty", "", URL{"", {}}},
    {"SchemeAndHostInCapitals", "HTTP://Host.Example/A?B", URL{"http://host.example/A?B", "B"}},
    {"NoPath", "http://h", URL{"http://h/", {}}},
    {"DefaultPort", "http://h:80/a", URL{"http://h/a", {}}},
    {"EscapesStay", "http://h/%41%2fb?c=%26%20d", URL{"http://h/%41%2fb?c=%26%20d", "c=%26%20d"}},
    {"BracketsInTheQuery", "http://h/a?type[0]=b", URL{"http://h/a?type[0]=b", "type[0]=b"}},
    {"NonAscii", "http://h/ä?b=ü", URL{"http://h/%C3%A4?b=%C3%BC", "b=%C3%BC"}},
    {"LongQuery", "http://h/a?" + longQuery, URL{"http://h/a?" + longQuery, longQuery}},
    {"File", "file:///a%20b/c.html", URL{"file:///a%20b/c.html", {}}},
    {"PathLikeAHost", "http:/..//h/a?b", URL{"http:/..//h/a?b", "b"}},
    {"SemicolonAfterThePort", "http://h:80;v=1/a?b", URL{"http://h:80;v=1/a?b", "b"}},
    {"ZeroByte", std::string("http://h/a\0b", 12), {}},
    {"BadPort", "http://h:port/a?b", {}},
    {"BlankInTheQuery", "http://h/a?b=c d", URL{"http://h/a?b=c%20d", "b=c%20d"}},
    {"BadEscape", "http://h/a?b=100%", URL{"http://h/a?b=100%", "b=100%"}},
};

TEST(URLParserTest, SplitsTheString) {
    for (const auto& [name, text, url] : rows) {
        SCOPED_TRACE(name);
        const auto different = backend().differentURLs.find(name);
        const auto& expected = different == backend().differentURLs.end() ? url : different->second;
        const auto parsed = backend().urls.URLWithString(text);
        ASSERT_EQ(parsed.has_value(), expected.has_value());
        if (parsed) {
            EXPECT_EQ(parsed->absoluteString, expected->absoluteString);
            EXPECT_EQ(parsed->query, expected->query);
        }
    }
}

}  // namespace vok::test
