#include "platform/gtk/services/GlibURLParser.h"

#include <Poco/StringTokenizer.h>
#include <gtest/gtest.h>

namespace vok::test {

const std::string schemes[] = {"http:", "HTTPS:", "file:", "about:", "x-y:", "", ":", "1:"};
const Poco::StringTokenizer authorities(
    ",/,//,///,//h,//H.,//h:,//h:80,//h:80;v=1,//h:65536,//h:-1,//h;v=1,//h;v=1:80,//u@h,//u:p@h,//u;v@h;w,"
    "//@,//:@:,//[::1],//[::1]:8,//[::1,//[v1.x],//[fe80::1%25lo],//h%2f,//h%,//%41,//\xC3\xA4,//a b,//h\\x,"
    "//*,//h:8x,//xn--,//a@b@c",
    ",");
const std::string paths[] = {"",       "/",         "//",  "/..//h",     "/../..", "/.",
                             ";v=1/a", "a",         "a:b", "/a b",       "/%",     "/%zz",
                             "/\xFF",  "/\xC3\xA4", "\\a", "/{}|^`\"<>", "/./a/.."};
const std::string queries[] = {"", "?", "?a=b&c", "?a?b", "?\xC3%C3%", "#", "#f?g", "?q#f"};

bool hasQuery(const std::string& text) { return text.find('?') < text.find('#'); }

TEST(OddAddressTest, IsTakenApartOrRefused) {
    const GlibURLParser parser;
    int taken = 0;
    for (const auto& scheme : schemes)
        for (const auto& authority : authorities)
            for (const auto& path : paths)
                for (const auto& query : queries) {
                    auto text = scheme;
                    text.append(authority).append(path).append(query);
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

}  // namespace vok::test
