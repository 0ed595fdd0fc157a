#pragma once
#include "Console.h"
#include "LoadBoard.h"
#include "render/Scene.h"

namespace laminate::cli {

/// Tells how many pads of a drawing are rings for want of their definition, if any.
void NoteUndefinedPads(Console& console, const BoardFiles& files, const Scene& scene);

}  // namespace laminate::cli
