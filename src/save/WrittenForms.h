#pragma once
// Forms that are written anew for a file that is preserved, and what comes of reading them.
#include <string>
#include <utility>

#include "save/FormText.h"
#include "save/SaveLosses.h"

namespace laminate {

/// What `put(FormText&)` writes where the reader has `nLevel` forms open.
template <class Put>
std::string FormsAsText(SaveLosses& losses, Put&& put, int nLevel = 0) {
  std::string s;
  TextOut out(s);
  FormStyle style;
  style.nLevel = nLevel;
  FormText text(out, losses, style);
  put(text);
  out.Flush();
  return s;
}

/// Tells `losses` of what the second of two writings lost and the first one did not: a form that still says what it
/// said is not written, and what it cannot say was never in the file.
void TellNewLosses(const SaveLosses& before, const SaveLosses& now, SaveLosses& losses);

/// Where losses are allowed, a text that is wanted becomes that of what it reads back as: `again` reads and writes.
template <class Again>
void LeaveOutLosses(const SaveLosses& losses, Again&& again, std::string& sWanted) {
  if (losses.Allowed().empty()) return;
  if (auto s = again(sWanted)) sWanted = std::move(*s);
}

}  // namespace laminate
