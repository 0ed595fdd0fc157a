#include "save/PreservedFootprints.h"

#include "save/Content.h"
#include "save/FormPatch.h"
#include "save/ReadBack.h"
#include "save/WrittenForms.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate {

std::string PreservedFootprints(const SavedDesign& design, const OwnedDesign& source, std::string_view text,
                                SaveLosses& losses) {
  if (SameContent(*design.pFtfTechnology, *source.pFtfTechnology) &&
      SameContent(*design.pFootprints, *source.pFootprints)) {
    return std::string(text);
  }
  SaveLosses lossesBefore = losses;
  SaveLosses lossesNow = losses;
  const auto write = [](const SavedDesign& d, SaveLosses& l) {
    return FormsAsText(l, [&](FormText& out) { PutFootprintFile(out, d); });
  };
  const std::string sWritten = write(source.View(), lossesBefore);
  std::string sWanted = write(design, lossesNow);
  TellNewLosses(lossesBefore, lossesNow, losses);
  if (losses.IsRefused()) return {};

  SourceEdits edits(text);
  const FormTree tree(text);
  const FormNode* pRoot = nullptr;
  for (const FormNode& form : tree.Roots()) {
    if (pRoot == nullptr && form.Name() == "ftf") pRoot = &form;
  }
  if (pRoot == nullptr) RaiseDoesNotReadBack("the footprint file");
  const auto again = [&](std::string s) -> std::optional<std::string> {
    const HeldText held(std::move(s));
    OwnedDesign got;
    if (!ReadFootprintText(held.View(), got)) return std::nullopt;
    SaveLosses ignored = losses;
    return write(got.View(), ignored);
  };
  LeaveOutLosses(losses, again, sWanted);
  const bool bDone = PatchUntilItReadsBack(
      edits, tree, *pRoot, [text](std::size_t n) { return text.data() + n; }, sWritten, sWanted,
      [&] { return again(edits.Apply()); });
  if (!bDone) RaiseDoesNotReadBack("the footprint file");
  std::string sSaved = edits.Apply();
  RequireFootprintsReadBack(design, sSaved, losses);
  return sSaved;
}

}  // namespace laminate
