#pragma once
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "designdata/RecordFields.h"

/// One rule of a rule file. All sections share this record; the kind, their keyword, says what the other fields hold.
///
///   section                              item                   first, second         value      name
///   placementRule, holeRule,             "clearance" or         the pair              clearance  of a designRuleUnit
///   markingRule, testRule,               "sameNetClearance"                                      its own
///   buildupViaRule, designRuleUnit
///   solderResistRule                     "clearanceFlow" or     the pair              clearance
///                                        "clearanceReflow"
///   qualifiedPadstack                    padstack               from, to layer
///   padstack, defaultPadstack                                                                    padstack
///   layer                                layer                  direction (first)
class CVRXoutRufRule final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 2;

  CVRXoutRufRule() = default;
  CVRXoutRufRule(const CVRXoutRufRule& source);
  CVRXoutRufRule& operator=(const CVRXoutRufRule& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufRule* clone() const;
  int operator==(const CVRXoutRufRule& other) const;
  int operator!=(const CVRXoutRufRule& other) const { return !(*this == other); }

  CString m_sRuleKind;  ///< the section: "designRuleUnit", "holeRule", "layer", ...
  CString m_sRuleName;  ///< name of the rule set or padstack
  CString m_sRuleItem;  ///< "clearance", "sameNetClearance", ..., or the padstack or layer
  CString m_sFirst;     ///< first of a pair
  CString m_sSecond;    ///< second of a pair
  double m_dValue = 0;  ///< the clearance, in the unit of the file

  static constexpr auto Fields() {
    using T = CVRXoutRufRule;
    using namespace laminate;
    return FieldList<Field<&T::m_sRuleKind>, Field<&T::m_sRuleItem>, Field<&T::m_sFirst>, Field<&T::m_sSecond>,
                     Field<&T::m_dValue>, Field<&T::m_sRuleName, kSinceVersion2>>();
  }
};

/// Rules in file order; owns them.
class CVRXoutRufRuleArray : public laminate::RecordArray<CVRXoutRufRule, CVRXoutRufRuleArray> {
 public:
  CVRXoutRufRuleArray() = default;
  CVRXoutRufRuleArray(const CVRXoutRufRuleArray& source);
  CVRXoutRufRuleArray& operator=(const CVRXoutRufRuleArray& source);

  /// The value of the first design rule for exactly this pair, in this order, and this item; -1 when there is none.
  double GetClearanceValue(const CString& sFirst, const CString& sSecond, const CString& sItem) const;
  /// Appends every design rule of that name to `pResult`. The rules stay this array's: empty the result with
  /// `SetSize(0)` before it dies, is assigned to, or loaded from an archive, each of which deletes them. Null raises.
  void GetDesignRuleUnit(CString& sName, CVRXoutRufRuleArray* pResult) const;

  CString m_sName;  ///< only for `CVRXoutRufRuleArrayArray::Find`: neither copied nor compared nor in an image
};

/// Arrays of rules; owns them.
class CVRXoutRufRuleArrayArray : public laminate::RecordArray<CVRXoutRufRuleArray, CVRXoutRufRuleArrayArray> {
 public:
  /// The first array of that name, or null; it stays this array's.
  CVRXoutRufRuleArray* Find(CString sName) const;
  /// Empties each array without deleting its rules: for arrays that `GetDesignRuleUnit` filled, and not for copies of
  /// them, which own theirs.
  void RemoveAllRuleArrayItem();
};

/// A board setting: (board (NAME VALUE)...).
class CVRXoutRufRuleBoard final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufRuleBoard() = default;
  CVRXoutRufRuleBoard(const CVRXoutRufRuleBoard& source);
  CVRXoutRufRuleBoard& operator=(const CVRXoutRufRuleBoard& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufRuleBoard* clone() const;
  int operator==(const CVRXoutRufRuleBoard& other) const;
  int operator!=(const CVRXoutRufRuleBoard& other) const { return !(*this == other); }

  CString m_sName;   ///< the keyword
  CString m_sValue;  ///< empty when the setting has none

  static constexpr auto Fields() {
    using T = CVRXoutRufRuleBoard;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_sValue>>();
  }
};

/// Board settings in file order; owns them.
class CVRXoutRufRuleBoardArray : public laminate::RecordArray<CVRXoutRufRuleBoard, CVRXoutRufRuleBoardArray> {
 public:
  /// The first setting of that name, or null; it stays the array's.
  CVRXoutRufRuleBoard* Find(CString sName) const;
};

/// An electrical net, or a pair of them: the nets that belong together. An image does not hold the difference.
class CVRXoutRufRuleElectricalNet final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufRuleElectricalNet() = default;
  CVRXoutRufRuleElectricalNet(const CVRXoutRufRuleElectricalNet& source);
  CVRXoutRufRuleElectricalNet& operator=(const CVRXoutRufRuleElectricalNet& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufRuleElectricalNet* clone() const;
  int operator==(const CVRXoutRufRuleElectricalNet& other) const;
  int operator!=(const CVRXoutRufRuleElectricalNet& other) const { return !(*this == other); }

  int m_bPair = 0;           ///< 1 for a pair
  CString m_sName;           ///< its own name
  CStringArray m_aNetNames;  ///< the nets that it consists of; of a pair, the electrical nets

  static constexpr auto Fields() {
    using T = CVRXoutRufRuleElectricalNet;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_aNetNames>, Field<&T::m_bPair, kNotInImage | kNotCopied>>();
  }
};

/// Electrical nets in file order; owns them.
class CVRXoutRufRuleElectricalNetArray
    : public laminate::RecordArray<CVRXoutRufRuleElectricalNet, CVRXoutRufRuleElectricalNetArray> {};
