#include "platform/FailurePage.h"

#include <gtest/gtest.h>

namespace vok::test {

namespace {

TEST(FailurePageTest, ShowsItsTextsAsTheyStand) {
    const auto page = failurePage("http://h/?a=1&b=\"<i>", "<script>no</script> & more");
    EXPECT_NE(page.find("<dd>http://h/?a=1&amp;b=&quot;&lt;i&gt;</dd>"), std::string::npos);
    EXPECT_NE(page.find("href=\"http://h/?a=1&amp;b=&quot;&lt;i&gt;\""), std::string::npos);
    EXPECT_NE(page.find("<dd>&lt;script&gt;no&lt;/script&gt; &amp; more</dd>"), std::string::npos);
}

}  // namespace

}  // namespace vok::test
