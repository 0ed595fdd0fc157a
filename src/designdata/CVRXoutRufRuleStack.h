#pragma once
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "designdata/RecordFields.h"

/// The design rules of one layer.
class CVRXoutRufRuleDesignRuleStackEachLayer final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufRuleDesignRuleStackEachLayer() = default;
  CVRXoutRufRuleDesignRuleStackEachLayer(const CVRXoutRufRuleDesignRuleStackEachLayer& source);
  CVRXoutRufRuleDesignRuleStackEachLayer& operator=(const CVRXoutRufRuleDesignRuleStackEachLayer& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufRuleDesignRuleStackEachLayer* clone() const;
  int operator==(const CVRXoutRufRuleDesignRuleStackEachLayer& other) const;
  int operator!=(const CVRXoutRufRuleDesignRuleStackEachLayer& other) const { return !(*this == other); }

  int m_nLayerNo = 0;
  CString m_sRuleName;  ///< name of a "designRuleUnit"

  static constexpr auto Fields() {
    using T = CVRXoutRufRuleDesignRuleStackEachLayer;
    using namespace laminate;
    return FieldList<Field<&T::m_sRuleName>, Field<&T::m_nLayerNo>>();
  }
};

/// Owns its elements.
class CVRXoutRufRuleDesignRuleStackEachLayerArray
    : public laminate::RecordArray<CVRXoutRufRuleDesignRuleStackEachLayer,
                                   CVRXoutRufRuleDesignRuleStackEachLayerArray> {
 public:
  /// The first record of that layer, or null; it stays the array's.
  CVRXoutRufRuleDesignRuleStackEachLayer* Find(int nLayerNo) const;
  /// `m_sRuleName` of the first record of that layer, else the empty text.
  CString GetRuleNameByLayer(int nLayerNo) const;
};

/// Which design rules each layer uses: (designRuleStack NAME (KEY LAYER (KEY RULE))...).
class CVRXoutRufRuleDesignRuleStack final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufRuleDesignRuleStack() = default;
  CVRXoutRufRuleDesignRuleStack(const CVRXoutRufRuleDesignRuleStack& source);
  CVRXoutRufRuleDesignRuleStack& operator=(const CVRXoutRufRuleDesignRuleStack& source);
  virtual void Serialize(CArchive& ar);
  /// A deep copy; the caller deletes it.
  virtual CVRXoutRufRuleDesignRuleStack* clone() const;
  int operator==(const CVRXoutRufRuleDesignRuleStack& other) const;
  int operator!=(const CVRXoutRufRuleDesignRuleStack& other) const { return !(*this == other); }

  CString m_sName;
  CVRXoutRufRuleDesignRuleStackEachLayerArray m_aEachLayer;

  static constexpr auto Fields() {
    using T = CVRXoutRufRuleDesignRuleStack;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_aEachLayer>>();
  }
};

/// Owns its elements.
class CVRXoutRufRuleDesignRuleStackArray
    : public laminate::RecordArray<CVRXoutRufRuleDesignRuleStack, CVRXoutRufRuleDesignRuleStackArray> {
 public:
  /// The first stack of that name, or null; it stays the array's.
  CVRXoutRufRuleDesignRuleStack* Find(CString sName) const;
  /// Appends the name of every stack.
  void GetDesignRuleStackNames(CStringArray& arrNames) const;
};

/// The track widths that one layer allows, in the unit of the file.
class CVRXoutRufRuleTraceRuleStackEachLayer final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufRuleTraceRuleStackEachLayer() = default;
  CVRXoutRufRuleTraceRuleStackEachLayer(const CVRXoutRufRuleTraceRuleStackEachLayer& source);
  CVRXoutRufRuleTraceRuleStackEachLayer& operator=(const CVRXoutRufRuleTraceRuleStackEachLayer& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufRuleTraceRuleStackEachLayer* clone() const;
  int operator==(const CVRXoutRufRuleTraceRuleStackEachLayer& other) const;
  int operator!=(const CVRXoutRufRuleTraceRuleStackEachLayer& other) const { return !(*this == other); }

  int m_nLayerNo = 0;
  double m_dWidth = 0;           ///< "width"
  double m_dMinWidth = 0;        ///< "minWidth"
  double m_dMinLandOverlap = 0;  ///< "minLandOverlap"
  double m_dMaxWireWidth = 0;    ///< "maxWireWidth"
  double m_dMinWireWidth = 0;    ///< "minWireWidth"

  static constexpr auto Fields() {
    using T = CVRXoutRufRuleTraceRuleStackEachLayer;
    using namespace laminate;
    return FieldList<Field<&T::m_nLayerNo>, Field<&T::m_dWidth>, Field<&T::m_dMinWidth>, Field<&T::m_dMinLandOverlap>,
                     Field<&T::m_dMaxWireWidth>, Field<&T::m_dMinWireWidth>>();
  }
};

/// Owns its elements.
class CVRXoutRufRuleTraceRuleStackEachLayerArray
    : public laminate::RecordArray<CVRXoutRufRuleTraceRuleStackEachLayer, CVRXoutRufRuleTraceRuleStackEachLayerArray> {
 public:
  /// The first record of that layer, or null; it stays the array's.
  CVRXoutRufRuleTraceRuleStackEachLayer* Find(int nLayerNo) const;
};

/// Which track widths each layer allows: (traceRuleStack NAME (KEY LAYER (width d) ...)...).
class CVRXoutRufRuleTraceRuleStack final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufRuleTraceRuleStack() = default;
  CVRXoutRufRuleTraceRuleStack(const CVRXoutRufRuleTraceRuleStack& source);
  CVRXoutRufRuleTraceRuleStack& operator=(const CVRXoutRufRuleTraceRuleStack& source);
  virtual void Serialize(CArchive& ar);
  /// A deep copy; the caller deletes it.
  virtual CVRXoutRufRuleTraceRuleStack* clone() const;
  int operator==(const CVRXoutRufRuleTraceRuleStack& other) const;
  int operator!=(const CVRXoutRufRuleTraceRuleStack& other) const { return !(*this == other); }

  /// The first record of that layer, or null; it stays the stack's.
  CVRXoutRufRuleTraceRuleStackEachLayer* Find(int nLayerNo) const { return m_aEachLayer.Find(nLayerNo); }

  CString m_sName;
  CVRXoutRufRuleTraceRuleStackEachLayerArray m_aEachLayer;

  static constexpr auto Fields() {
    using T = CVRXoutRufRuleTraceRuleStack;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_aEachLayer>>();
  }
};

/// Owns its elements.
class CVRXoutRufRuleTraceRuleStackArray
    : public laminate::RecordArray<CVRXoutRufRuleTraceRuleStack, CVRXoutRufRuleTraceRuleStackArray> {
 public:
  /// The first stack of that name, or null; it stays the array's.
  CVRXoutRufRuleTraceRuleStack* Find(CString sName) const;
  /// Appends the name of every stack.
  void GetTraceRuleStackNames(CStringArray& arrNames) const;
};
