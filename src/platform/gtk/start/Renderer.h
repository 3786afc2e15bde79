#pragma once

namespace vok {

/// On many graphics stacks the GPU path of the web view draws nothing, and to load the GPU's drivers takes
/// longer than all else the toolkit does at its start. Nothing here needs a GPU, so toolkit and web view draw
/// without one, unless the person chose a renderer with GSK_RENDERER. To be called before the toolkit starts.
void usePlainRenderer();

/// Whether usePlainRenderer made the choice.
bool plainRendererInUse();

/// Takes the choice out of the environment again: it is meant for this program, not for those that it starts.
/// To be called when the first window is shown and its web view has begun to load, before anything is
/// started; toolkit and web view have read it by then and keep to it.
void keepPlainRendererToOurselves();

}  // namespace vok
