#include "contract/Backend.h"
#include "platform/macos/Services.h"

const vok::test::Backend& vok::test::backend() {
    static const MainBundle bundle;
    static const PlistReader propertyLists;
    static const NSURLParser urls;
    // NSURL normalises nothing and does not check the port.
    static const Backend answers{bundle,
                                 propertyLists,
                                 urls,
                                 {{"SchemeAndHostInCapitals", URL{"HTTP://Host.Example/A?B", "B"}},
                                  {"NoPath", URL{"http://h", {}}},
                                  {"DefaultPort", URL{"http://h:80/a", {}}},
                                  {"BadPort", URL{"http://h:port/a?b", "b"}},
                                  {"ZeroByte", URL{"http://h/a%00b", {}}}},
                                 "2024-02-29 12:00:00 +0000",
                                 "inner ="};
    return answers;
}
