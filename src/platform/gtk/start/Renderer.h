#pragma once

#include <vector>

namespace vok {

/// How GTK and the web view draw. On many graphics stacks the GPU path of the web view draws nothing, and
/// loading the GPU's drivers takes longer than the rest of GTK's start. Nothing here needs a GPU, so both
/// draw without one, unless the user chose a renderer with GSK_RENDERER.
class Renderer {
public:
    /// Sets the environment accordingly. To be called before GTK starts.
    Renderer();

    /// Whether GTK and the web view draw without the GPU.
    bool isPlain() const { return !variables.empty(); }

    /// Restores the environment for child processes. To be called when the first window
    /// is shown and its web view has begun to load: both have read it by then.
    void restoreEnvironment() const;

private:
    std::vector<const char*> variables;  ///< set here
};

}  // namespace vok
