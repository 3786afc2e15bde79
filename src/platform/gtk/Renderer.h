#pragma once

#include <giomm/applaunchcontext.h>

namespace vok {

/// On many graphics stacks the GPU path of the web view draws nothing. Nothing here needs a GPU, so toolkit
/// and web view draw without one, unless the person chose a renderer with GSK_RENDERER. To be called before
/// the toolkit starts.
void usePlainRenderer();

/// Whether usePlainRenderer made the choice.
bool plainRendererInUse();

/// Keeps that choice from the programs that are started with `context`.
void withoutPlainRenderer(const Glib::RefPtr<Gio::AppLaunchContext>& context);

}  // namespace vok
