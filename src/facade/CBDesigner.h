#pragma once
#include <cstdio>

#include "base/CProgressCtrl.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/LoadStatus.h"
#include "base/Pool.h"

class CBDboardContainer;
class CBDdrawObj;
class CBDfootprintContainer;
class CBDlibraryEntities;
class CBDparameter;
class CBDtechnologyContainer;
class CBDvertexArray;
class CECadCls;
class CECadClsLvl;
class CVRXoutPackageArray;
class CVRXoutPrfFunctionArray;
class CVRXoutPrfPart;
class CVRXoutPrfPartArray;
class CVRXoutPrfPinAssignArray;

/// The root of the board database. It owns the six containers that hold one design for its whole life; reading,
/// splitting and writing of the board and footprint files are its operations. A host reaches it through
/// `CPC_BD_Cls_Get::pGetBDesigner` or makes one itself, and reads and changes the design through the public pointers.
///
/// Nothing empties the containers: each load adds to what they hold. Lengths are in mm, angles in degrees. Every
/// operation runs on the caller's thread; one root serves one thread at a time.
///
/// A form of a file that lacks a value it needs raises `CInvalidArgException` out of a load. What was read until then
/// stays. A null argument where an object is needed raises it too.
class CBDesigner : public laminate::Pooled {
 public:
  /// Creates the six containers, empty.
  CBDesigner();
  /// Copies member by member: the containers, the control and the log are shared, not cloned. Of the objects that share
  /// them only one may be destroyed; the host clears the pointers of the others. There is no deep copy of a root.
  CBDesigner(const CBDesigner&) = default;
  /// As the copy constructor. The containers that this object held are not deleted: they are the host's to delete.
  CBDesigner& operator=(const CBDesigner&) = default;
  /// Deletes the six containers with all that is in them, each if not null. The log is left open.
  virtual ~CBDesigner();

  // ---- settings and lookups ----

  /// The control that the loads of board files move from now on, or null for none. Not owned: it must live as long as
  /// loads run, also those of later calls.
  void vSetPCFProgressPtr(CProgressCtrl* pProgress) { m_pPCFProgress = pProgress; }
  /// A length in mm. A text with a "." is taken as it stands; any other is a count of database units, of which 100000
  /// make one mm. Only the "." is looked for, so "1e3" counts as having none. Text that is no number gives 0.
  double dDBUnit2Double(CString sToken);
  /// The layer kind of the first sub-layer of the board's technology with that name: "systemLayer" (also where the kind
  /// is the word "type"), "conductive" or "nonConductive". Empty when there is none.
  CString sGetLayerTypeFromSubLayer(CString sName);
  /// The first part whose `m_sPinAssignRef` is `sPinAssign`, or null. It stays the array's. Null slots are passed over.
  CVRXoutPrfPart* pGetBDoutPrfPart(CVRXoutPrfPartArray* pParts, CString sPinAssign);

  // ---- loading a board file (.pcf) ----

  /// The number of opening less that of closing brackets of a line outside strings; white space at the line's ends does
  /// not count. Strings may span lines: their state is kept in `m_bInQuote` from call to call, and nothing resets it. A
  /// quote behind a backslash leaves the state alone, but for one that ends a string and has only a ")" behind it.
  int nGetBraceCount(CString sLine);
  /// Cuts a board file by bracket depth into "others.txt", a piece per component ("component1.txt" and so on) and one
  /// per layer of the board layout ("layer1.txt"), in a folder of its own under `BKUtility::GetDataPath()`. Sets the
  /// two counts below, each when its section ends: where a section is missing the count stands. A wanted form that
  /// opens and closes on one line is lost. The folder stays, and so do pieces of an earlier split with higher numbers;
  /// without `BKUtility::SetDataPath` that is until the process ends.
  ///
  /// Brackets are counted as `nGetBraceCount` does it, so that a string left open by one file goes on in the next
  /// split. The folder is locked meanwhile: a split of a file that is being split or loaded makes nothing.
  /// `GetLoadStatus` tells of a file that cannot be read and of a piece that cannot be written; only `CMemoryException`
  /// is raised. The file must not change meanwhile: nothing keeps other programs from it.
  void vSeparaePCFIntoSeveralFile(CString sPath);
  /// Cuts a footprint file into a piece per padstack ("PadStack1.txt" and so on) and one per footprint
  /// ("Footprint1.txt"), in "Data\Tmp" under `BKUtility::GetDataPath()`. The pieces stay for the host; nothing else of
  /// the file is kept, nor the counts. That folder serves all splits of footprint files, one at a time. Otherwise as
  /// above.
  void vSeparaeFTFIntoSeveralFile(CString sPath);
  /// Loads a board file: cuts it into pieces, reads everything outside the two big sections, then the components, then
  /// the layers, and removes the working folder. Sends the positions 40, 60, 80 and 100 to the control and writes to
  /// the log, as they are set at that moment. `GetLoadStatus` tells how it ended.
  ///
  /// A file that cannot be read, or whose pieces cannot be written, ends the load with a line in the log; both counts
  /// are then 0 and no position is sent. A file whose brackets do not balance outside the two sections ends it after
  /// position 40; the working folder then stays. A piece that is not well formed is skipped or partly used, and the
  /// load goes on; forms nested deeper than 20 levels show a message box. Counts that stand from an earlier split ask
  /// for pieces where the file lacks the section.
  ///
  /// A form that lacks a value raises `CInvalidArgException`, with the line in this file; what was read before stays,
  /// and so does the working folder. What the control raises passes through. A root must not be loaded again from
  /// within its own load.
  void vParsePCF(CString sPath);
  /// Reads the tree of "others.txt": version, technology, sub-boards, groups, nets, parameters, library entities. 0, or
  /// -1 when it has no root form "pcf", "tcf" or "pnf": the reader is deleted then, and only then. Everything is added
  /// to what is there, but for the version, which is replaced; a net array that was taken is made anew. The form of the
  /// tree:
  ///   (pcf (header (version V)) (technologyContainer ...) (boardContainer (subBoards ...) (compGroups ...) (nets ...))
  ///     (parameter ...) (libraryEntities ...))
  /// where each section may be absent and their order does not matter.
  int nReadOtherAndPutInVDB(CECadCls* pReader);
  /// Reads one "layer" form of the board layout and appends its shapes to the board; the form is shown in
  /// board/LayerTranslator.h. Rules, messages and infos in it are passed over, of a "refer" the first shape is kept,
  /// and a layer that only tells of another ("drawOf", "infoOf") gives none. Always 0. The node stays the caller's.
  int nReadBoardLayerAndPutInVDB(CECadClsLvl* pNode);
  /// Reads one "component" form and appends the component to the board. Always 0. The node stays the caller's.
  int nReadComponentAndPutInVDB(CECadClsLvl* pNode);

  // ---- loading a footprint file (.ftf) ----

  /// Loads a footprint file whole into the footprint technology and the footprint container, and writes to the log.
  /// A file without a root form "ftf" gives nothing. `GetLoadStatus` tells how it ended.
  void vParseFTF(CString sPath);
  /// Reads only the footprints whose names are in `arrNames`, without their "uver" and properties and with the first
  /// layer of each pin. The rest of the file is only scanned.
  void vParseFTFInKOTRAndGetFootprints(CString sPath, CStringArray& arrNames);
  /// Reads only the footprint layers, all pads and all padstacks.
  void vParseFTFInKOTRAndGetPadsAndPadstacks(CString sPath);

  // ---- shapes ----

  /// The shape that a form of a geometry section stands for, with the layer that is handed in; `bRefer` is 1 inside a
  /// "refer". The caller owns the result with all that it holds; the node stays the caller's. Null for "basePoint",
  /// "dimension", "dimLeader", "ruleArea", "drawOf", "cavityFrom" and "cavityTo"; a keyword that is not known shows the
  /// message box "New Draw Type : %s" and gives null. The shapes in a "boardAssembly" go to the board container,
  /// without which it raises. A null node and a form that lacks a value raise `CInvalidArgException`; nothing leaks.
  CBDdrawObj* pCECadClsLvl2CBDdrawObj(CECadClsLvl* pNode, int nLayerNumber, CString sLayerName, CString sLayerType,
                                      int bRefer);
  /// Appends the vertices of a "vertex" form, one per "pt" and "arc" in it, to an array, which owns them; other forms
  /// in it are passed over. Null arguments and missing values raise `CInvalidArgException`; what was appended before
  /// stays.
  void vInsertVertexIntoCBDvertexArray(CECadClsLvl* pNode, CBDvertexArray* pArray);

  // ---- writing ----

  /// Writes the design as a set of files: the stem is `sPath` without a ".pcf" at its end, followed by ".pcf", ".ftf",
  /// ".tcf", ".pkf" (not with null `pPackages`) and ".cdf". Null part, pin-assign and function arrays count as empty.
  /// The arrays stay the caller's; `pBDesigner` has no effect. Always 0.
  ///
  /// The ".tcf" is indented by 2 and the ".pkf" by 4, with "%%" made "%" and lines of more than 1023 bytes broken; a
  /// line there that begins with a blank shows a message box. Since brackets in names count as brackets, an unclosed
  /// one moves all that follows: a name of n of them in front of m lines costs n times m blanks. The other files are
  /// flush left.
  ///
  /// Each file appears whole: it is written beside its name and renamed into place when it is complete, under the mode
  /// of the file that it replaces; hard links to that one, its owner and further attributes are not kept. A file that
  /// cannot be written raises `CFileException` with its name and the cause; files already in place stay. A null
  /// container of this root raises `CInvalidArgException` before any file is touched, and failing memory
  /// `CMemoryException`. The database must not change meanwhile.
  ///
  /// Writing changes the database in small ways that the writers' classes tell, such as "%" becoming "%%" in net names:
  /// a second call writes those changes once more, also when the first one failed. The records of the arrays change as
  /// lastingly: "%" is doubled in the port names of the first part of each pin assign, whose
  /// empty port types become "INOUT", and in the port numbers of function instances; of a part's properties with equal
  /// key and value only the last stays. The port names are doubled once for each pin assign of that name, so that n of
  /// them make 2^n of a "%". A pin assign without a part is written without ports.
  int nPrint2File(CString sPath, CBDesigner* pBDesigner, CVRXoutPackageArray* pPackages, CVRXoutPrfPartArray* pParts,
                  CVRXoutPrfPinAssignArray* pPinAssigns, CVRXoutPrfFunctionArray* pFunctions);

  /// How the last load or split of this object ended: its first fault, or `ok`, with a text where a working folder
  /// could not be removed. A load that a form without a needed value ended by `CInvalidArgException` has that fault
  /// too; other exceptions are no faults of the file and leave none: null containers, failing memory, what a control or
  /// a message box raises. Lines are those of the host's own file.
  const laminate::LoadStatus& GetLoadStatus() const { return m_status; }

  int m_bInQuote;                                ///< string state of `nGetBraceCount`
  CProgressCtrl* m_pPCFProgress;                 ///< moved by `vParsePCF`; null: none; the host's
  CBDtechnologyContainer* m_pTechnology;         ///< technology of the board file; owned
  CBDtechnologyContainer* m_pFtfTechnology;      ///< technology of the footprint file; owned
  CBDfootprintContainer* m_pFootprintContainer;  ///< pads, padstacks and footprints; owned
  CBDboardContainer* m_pBoardContainer;          ///< board contents; owned
  CBDparameter* m_pParameter;                    ///< design parameters; owned
  CBDlibraryEntities* m_pLibraryEntities;        ///< library references of the design; owned
  CString m_sSpare;                              ///< copied with the object, not used otherwise
  CString m_sVersion;                            ///< version read from the header of the board file
  int m_nComponentFileCount;                     ///< component pieces of the last split
  int m_nLayerFileCount;                         ///< layer pieces of the last split
  FILE* m_pLogFile;                              ///< log of the loads; null: none; the host's, never closed here

 private:
  laminate::LoadStatus m_status;
};
