#include "UndefinedPads.h"

namespace laminate::cli {

void NoteUndefinedPads(Console& console, const BoardFiles& files, const Scene& scene) {
  const std::size_t n = scene.CountUndefined();
  if (n == 0) return;
  console.Note({files.pcf}, std::to_string(n) + (n == 1 ? " pad has" : " pads have") +
                                " no definition in the footprint library" +
                                (files.ftf.empty() ? " (there is no --ftf)" : "") + ": each is drawn as a small ring");
}

}  // namespace laminate::cli
