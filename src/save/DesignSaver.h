#pragma once
#include <string>
#include <string_view>

#include "base/CString.h"
#include "save/FreshForms.h"
#include "save/SaveLosses.h"

namespace laminate {

/// Saves a design as the files that it was loaded from. A form of a source whose objects are still what it says is
/// copied byte for byte, with its comments, blanks, line ends and all that reading passes over; where an object has
/// changed its form is written anew in place, as much of it as has changed; what is new stands where its neighbours
/// stand, and what is gone takes its form along. An unedited design gives the bytes of its source.
///
///   DesignSaver saver(design);
///   saver.SetBoardFile("out/board.pcf", "board.pcf");
///   saver.SetFootprintFile("out/board.ftf", "board.ftf");
///   if (!saver.Save()) for (const SaveLoss& loss : saver.Losses().Refused()) ...
///
/// What changed is found by reading the sources again and holding what comes of them against the design; a design need
/// not keep account of its changes. Without a source a file is written anew whole.
class DesignSaver {
 public:
  /// The design stays the caller's and is not changed.
  explicit DesignSaver(const SavedDesign& design);

  /// The board file to write and the one that the design was loaded from, which may be the same; an empty source: none.
  void SetBoardFile(const CString& sTarget, const CString& sSource = {});
  /// The footprint file. A design that was loaded with one needs its source here also where only the board file is
  /// saved; the target is then empty.
  void SetFootprintFile(const CString& sTarget, const CString& sSource = {});
  /// Allows that a field is not saved where its value cannot be said, by its name in a loss.
  void AllowLoss(std::string_view sName) { m_allowances.Allow(sName); }

  /// Writes the files, each of which appears whole or not at all, when the texts of all of them are known. False, with
  /// nothing written, when something of the design cannot be said in them and that loss was not allowed.
  ///
  /// Raises `CFileException` when a source cannot be read or a file cannot be written, and `CInvalidArgException` when
  /// a source is not well formed or its saved text would not read back as the design. Sources are read before anything
  /// is written.
  bool Save();

  /// What cannot be said, after `Save`.
  const SaveLosses& Losses() const { return m_losses; }

 private:
  struct File {
    CString sTarget;
    CString sSource;
  };

  const SavedDesign m_design;
  File m_board;
  File m_footprints;
  SaveLosses m_allowances;
  SaveLosses m_losses;
};

}  // namespace laminate
