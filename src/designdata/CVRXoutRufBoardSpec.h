#pragma once
#include "base/CLProperty.h"
#include "base/CString.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "designdata/RecordFields.h"

/// A grid that an activity uses by default: (defaultGrid (NAME VALUE)...).
class CVRXoutRufBoardSpecDefaultGrid final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufBoardSpecDefaultGrid() = default;
  CVRXoutRufBoardSpecDefaultGrid(const CVRXoutRufBoardSpecDefaultGrid& source);
  CVRXoutRufBoardSpecDefaultGrid& operator=(const CVRXoutRufBoardSpecDefaultGrid& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufBoardSpecDefaultGrid* clone() const;
  int operator==(const CVRXoutRufBoardSpecDefaultGrid& other) const;
  int operator!=(const CVRXoutRufBoardSpecDefaultGrid& other) const { return !(*this == other); }

  CString m_sName;   ///< the activity
  CString m_sValue;  ///< name of the grid

  static constexpr auto Fields() {
    using T = CVRXoutRufBoardSpecDefaultGrid;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_sValue>>();
  }
};

/// Owns its elements.
class CVRXoutRufBoardSpecDefaultGridArray
    : public laminate::RecordArray<CVRXoutRufBoardSpecDefaultGrid, CVRXoutRufBoardSpecDefaultGridArray> {};

/// A drill with two whole numbers as the file has them: (drillingRule (NAME n n)...). Files of this family give its
/// diameters in units of 1/100000 mm.
class CVRXoutRufBoardSpecDrillingRule final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufBoardSpecDrillingRule() = default;
  CVRXoutRufBoardSpecDrillingRule(const CVRXoutRufBoardSpecDrillingRule& source);
  CVRXoutRufBoardSpecDrillingRule& operator=(const CVRXoutRufBoardSpecDrillingRule& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufBoardSpecDrillingRule* clone() const;
  int operator==(const CVRXoutRufBoardSpecDrillingRule& other) const;
  int operator!=(const CVRXoutRufBoardSpecDrillingRule& other) const { return !(*this == other); }

  CString m_sName;  ///< name of the drill
  int m_nValue1 = 0;
  int m_nValue2 = 0;

  static constexpr auto Fields() {
    using T = CVRXoutRufBoardSpecDrillingRule;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_nValue1>, Field<&T::m_nValue2>>();
  }
};

/// Owns its elements.
class CVRXoutRufBoardSpecDrillingRuleArray
    : public laminate::RecordArray<CVRXoutRufBoardSpecDrillingRule, CVRXoutRufBoardSpecDrillingRuleArray> {};

/// A grid: (gridDef NAME (pitch x y) (pt x y)), in mm.
class CVRXoutRufBoardSpecGridDef final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufBoardSpecGridDef() = default;
  CVRXoutRufBoardSpecGridDef(const CVRXoutRufBoardSpecGridDef& source);
  CVRXoutRufBoardSpecGridDef& operator=(const CVRXoutRufBoardSpecGridDef& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufBoardSpecGridDef* clone() const;
  int operator==(const CVRXoutRufBoardSpecGridDef& other) const;
  int operator!=(const CVRXoutRufBoardSpecGridDef& other) const { return !(*this == other); }

  CString m_sName;  ///< name of the grid
  double m_dPitchX = 0;
  double m_dPitchY = 0;
  double m_dPtX = 0;
  double m_dPtY = 0;

  static constexpr auto Fields() {
    using T = CVRXoutRufBoardSpecGridDef;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_dPitchX>, Field<&T::m_dPitchY>, Field<&T::m_dPtX>,
                     Field<&T::m_dPtY>>();
  }
};

/// Owns its elements.
class CVRXoutRufBoardSpecGridDefArray
    : public laminate::RecordArray<CVRXoutRufBoardSpecGridDef, CVRXoutRufBoardSpecGridDefArray> {};

/// A named track width in mm: (patternWidth (KEY width (KEY NAME))...). The class keeps its spelling.
class CVRXoutRufBoardSpecpatternWidth final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufBoardSpecpatternWidth() = default;
  CVRXoutRufBoardSpecpatternWidth(const CVRXoutRufBoardSpecpatternWidth& source);
  CVRXoutRufBoardSpecpatternWidth& operator=(const CVRXoutRufBoardSpecpatternWidth& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufBoardSpecpatternWidth* clone() const;
  int operator==(const CVRXoutRufBoardSpecpatternWidth& other) const;
  int operator!=(const CVRXoutRufBoardSpecpatternWidth& other) const { return !(*this == other); }

  CString m_sName;  ///< name of the width
  double m_dWidth = 0;

  static constexpr auto Fields() {
    using T = CVRXoutRufBoardSpecpatternWidth;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_dWidth>>();
  }
};

/// Owns its elements.
class CVRXoutRufBoardSpecpatternWidthArray
    : public laminate::RecordArray<CVRXoutRufBoardSpecpatternWidth, CVRXoutRufBoardSpecpatternWidthArray> {};

/// The board-level settings of a rule file. Two distinct ones are never equal, whatever they hold.
class CVRXoutRufBoardSpec final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufBoardSpec() = default;
  CVRXoutRufBoardSpec(const CVRXoutRufBoardSpec& source);
  CVRXoutRufBoardSpec& operator=(const CVRXoutRufBoardSpec& source);
  virtual void Serialize(CArchive& ar);
  /// A deep copy; the caller deletes it.
  virtual CVRXoutRufBoardSpec* clone() const;
  int operator==(const CVRXoutRufBoardSpec& other) const;
  int operator!=(const CVRXoutRufBoardSpec& other) const { return !(*this == other); }

  CVRXoutRufBoardSpecDefaultGridArray m_aDefaultGrid;
  CVRXoutRufBoardSpecDrillingRuleArray m_aDrillingRule;
  CVRXoutRufBoardSpecpatternWidthArray m_aPatternWidth;
  CVRXoutRufBoardSpecGridDefArray m_aGridDef;
  CLPropertyArray m_aProperty;  ///< not read from a file

  static constexpr auto Fields() {
    using T = CVRXoutRufBoardSpec;
    using namespace laminate;
    return FieldList<Field<&T::m_aDefaultGrid>, Field<&T::m_aDrillingRule>, Field<&T::m_aPatternWidth>,
                     Field<&T::m_aGridDef>, Field<&T::m_aProperty>>();
  }
};
