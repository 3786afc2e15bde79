#include "contract/Backend.h"
#include "platform/gtk/services/ExecutableBundle.h"
#include "platform/gtk/services/GlibURLParser.h"
#include "platform/gtk/services/PlistReader.h"

const vok::test::Backend& vok::test::backend() {
    static const PlistReader propertyLists;
    static const ExecutableBundle bundle;
    static const GlibURLParser urls;
    static const Backend answers{bundle, propertyLists, urls, {}, "2024-02-29T12:00:00Z", "<key>inner</key>"};
    return answers;
}
