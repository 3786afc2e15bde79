#include "platform/gtk/start/Renderer.h"

#include <gtk/gtk.h>

#include <array>
#include <cstdlib>
#include <utility>

namespace vok {

namespace {

using Variable = std::pair<const char*, const char*>;

/// GTK 4.16 moved the option. https://docs.gtk.org/gtk4/running.html
Variable toolkitWithoutGL() {
    return gtk_get_minor_version() < 16 ? Variable("GDK_DEBUG", "gl-disable") : Variable("GDK_DISABLE", "gl");
}

}  // namespace

Renderer::Renderer() {
    constexpr auto rendererVariable = "GSK_RENDERER";
    if (std::getenv(rendererVariable))
        return;
    const auto choice = std::to_array<Variable>({
        {rendererVariable, "cairo"},
        toolkitWithoutGL(),
        {"WEBKIT_DISABLE_DMABUF_RENDERER", "1"},
        {"WEBKIT_WEB_RENDER_DEVICE_FILE", "/dev/null"},  // otherwise the driver is loaded to find one
    });
    for (const auto& [name, value] : choice) {
        if (std::getenv(name))
            continue;
        setenv(name, value, 0);
        variables.push_back(name);
    }
}

void Renderer::restoreEnvironment() const {
    for (const char* const name : variables)
        unsetenv(name);
}

}  // namespace vok
