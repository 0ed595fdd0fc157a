#pragma once
#include <cstdio>

#include "base/CString.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "base/TextOut.h"
#include "designdata/RecordFields.h"

/// How a package is mounted: a soldering process and the footprints that serve it.
class CVRXoutPackageMountForm : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutPackageMountForm() = default;
  CVRXoutPackageMountForm(const CVRXoutPackageMountForm& source);
  CVRXoutPackageMountForm& operator=(const CVRXoutPackageMountForm& source);
  virtual ~CVRXoutPackageMountForm() = default;
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutPackageMountForm* clone() const;
  int operator==(const CVRXoutPackageMountForm& other) const;
  int operator!=(const CVRXoutPackageMountForm& other) const { return !(*this == other); }

  /// Writes the mount form; only the first of a package (index 0) carries its name. Gives 0. A null stream raises.
  int nPrint2File(FILE* fp, int nIndex);
  /// The same to a text.
  void Write(laminate::TextOut& out, int nIndex) const;

  CString m_sSpec;                   ///< soldering process that it is for; an empty "(spec" in a file gives "default"
  CString m_sBottomFootprint;        ///< footprint for the bottom side; empty when there is none
  CString m_sFootprintRef;           ///< footprint
  CString m_sMountForm = "default";  ///< name of the mount form; empty when a file gives none

  static constexpr auto Fields() {
    using T = CVRXoutPackageMountForm;
    using namespace laminate;
    return FieldList<Field<&T::m_sMountForm>, Field<&T::m_sSpec>, Field<&T::m_sBottomFootprint>,
                     Field<&T::m_sFootprintRef>>();
  }
};

/// Mount forms of a package; owns them.
class CVRXoutPackageMountFormArray
    : public laminate::RecordArray<CVRXoutPackageMountForm, CVRXoutPackageMountFormArray> {};

/// A physical package: the housing of parts, with its mount forms. The elements of a block may come in any order. The
/// brackets that close a value are taken off it, but for the package's name, which should be quoted.
///
///   (package "NAME"
///   (type SMD)
///   (uver 1)
///   (mountForm default
///   (footprintRef "F")
///   (bottomFootprint "B")
///   (spec "reflow")
///   )
///   )
class CVRXoutPackage : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutPackage();
  CVRXoutPackage(const CVRXoutPackage& source);
  CVRXoutPackage& operator=(const CVRXoutPackage& source);
  virtual ~CVRXoutPackage();
  virtual void Serialize(CArchive& ar);
  /// A deep copy; the caller deletes it.
  virtual CVRXoutPackage* clone() const;
  int operator==(const CVRXoutPackage& other) const;
  int operator!=(const CVRXoutPackage& other) const { return !(*this == other); }

  /// Writes the package with its mount forms; gives 0. The type "user-defined" is written as UNDEF, and so is any type
  /// of a package without a name. A null stream raises, and so does a null array, with nothing written.
  int nPrint2File(FILE* fp);
  /// The same to a text.
  void Write(laminate::TextOut& out) const;
  /// The first mount form for exactly that soldering process, or null; it stays the package's.
  CVRXoutPackageMountForm* pGetOutPackageMountFormWithSolderSpec(CString sSpec) const;
  /// Appends a default mount form for that soldering process unless there is one already.
  void vFindSpecWithNameAndNoneCaseRegister(CString sSpec);

  CString m_sType;                                            ///< SMD, DIP, user-defined, ...
  int m_nUver = 1;                                            ///< user version
  CString m_sName = "UNDEF";                                  ///< the name under which parts refer to it
  CVRXoutPackageMountFormArray* m_pMountFormArray = nullptr;  ///< owned, never null

  static constexpr auto Fields() {
    using T = CVRXoutPackage;
    using namespace laminate;
    return FieldList<Field<&T::m_nUver>, Field<&T::m_sType>, Field<&T::m_sName>, Field<&T::m_pMountFormArray>>();
  }
};

/// Packages in file order; owns them.
class CVRXoutPackageArray : public laminate::RecordArray<CVRXoutPackage, CVRXoutPackageArray> {};
