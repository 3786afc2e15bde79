#include "platform/gtk/Renderer.h"

#include <cstdlib>

namespace vok {

namespace {
constexpr auto rendererVariable = "GSK_RENDERER";
bool chosenHere = false;
}  // namespace

void usePlainRenderer() {
    chosenHere = !std::getenv(rendererVariable);
    if (chosenHere)
        setenv(rendererVariable, "cairo", 0);
}

bool plainRendererInUse() { return chosenHere; }

void withoutPlainRenderer(const Glib::RefPtr<Gio::AppLaunchContext>& context) {
    if (chosenHere)
        context->unsetenv(rendererVariable);
}

}  // namespace vok
