#pragma once
#include "base/CString.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "designdata/RecordFields.h"

/// A layer of a board's physical build-up: copper, dielectric, or a coating such as the solder resist. Numbers are as
/// the file has them; files of this family give thicknesses in mm. The loss tangent exists in memory only: an image
/// does not hold it, and neither copy nor comparison regards it.
///
///   (conductor 1 (thickness d) (resistivity d) (lossTangent d) (dielectricConstant d)
///     (material M...) (place P) (propertyS KEY "WIRE"))        or dielectric
///   (physical ABOVE (thickness d) ... (material M...))         or BELOW
///
/// "WIRE" gives the role SIGNAL, "GROUND" and "POWER" give roles of these names. A coating without a material is named
/// after its dielectric constant and loss tangent: Solder_Resist_4_0.02.
class CVRXoutRufStackupLayer final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 2;

  CVRXoutRufStackupLayer() = default;
  CVRXoutRufStackupLayer(const CVRXoutRufStackupLayer& source);
  CVRXoutRufStackupLayer& operator=(const CVRXoutRufStackupLayer& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufStackupLayer* clone() const;
  int operator==(const CVRXoutRufStackupLayer& other) const;
  int operator!=(const CVRXoutRufStackupLayer& other) const { return !(*this == other); }

  CString m_sLayerKind;       ///< "conductor", "dielectric", "Solder_Resist_Top", "Solder_Resist_Bottom" or empty
  CString m_sMaterial;        ///< material, without blanks where the file gave it as one text
  CString m_sLayerRole;       ///< "SIGNAL", "GROUND", "POWER" or empty
  CString m_sPlace;           ///< where the layer lies; of a coating "ABOVE" or "BELOW"
  int m_bPhysical = 0;        ///< 1 for a coating
  int m_nLayerNo = 1;         ///< number among its kind
  int m_nAuxNo = 1;           ///< not read from a file
  double m_dThickness = 0;    ///< in mm
  double m_dResistivity = 0;  ///< specific resistance
  double m_dDielectricConstant = 0;  ///< relative, without a unit
  double m_dLossTangent = 0;         ///< without a unit

  static constexpr auto Fields() {
    using T = CVRXoutRufStackupLayer;
    using namespace laminate;
    return FieldList<Field<&T::m_sLayerKind>, Field<&T::m_sMaterial>, Field<&T::m_sLayerRole>, Field<&T::m_nLayerNo>,
                     Field<&T::m_nAuxNo>, Field<&T::m_dThickness>, Field<&T::m_dResistivity>,
                     Field<&T::m_dDielectricConstant>, Field<&T::m_bPhysical, kSinceVersion2>,
                     Field<&T::m_sPlace, kSinceVersion2>,
                     Field<&T::m_dLossTangent, kNotInImage | kNotCopied | kNotCompared>>();
  }
};

/// Layers in file order, of all kinds; owns them.
class CVRXoutRufStackupLayerArray : public laminate::RecordArray<CVRXoutRufStackupLayer, CVRXoutRufStackupLayerArray> {
};

/// A board's physical build-up. It is not copied: assignment leaves the target as it is, a copy is an empty stack-up
/// with an array of its own, and two distinct stack-ups are never equal.
class CVRXoutRufStackup final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 2;

  CVRXoutRufStackup();
  CVRXoutRufStackup(const CVRXoutRufStackup& source);
  CVRXoutRufStackup& operator=(const CVRXoutRufStackup& source);
  ~CVRXoutRufStackup();
  virtual void Serialize(CArchive& ar);
  /// An empty stack-up; the caller deletes it.
  virtual CVRXoutRufStackup* clone() const;
  int operator==(const CVRXoutRufStackup& other) const;
  int operator!=(const CVRXoutRufStackup& other) const { return !(*this == other); }

  CVRXoutRufStackupLayerArray* m_pLayerArray = nullptr;  ///< owned, never null
  CString m_sBaseMaterial;                               ///< material of the board: (baseMaterial M)

  static constexpr auto Fields() {
    using T = CVRXoutRufStackup;
    using namespace laminate;
    return FieldList<Field<&T::m_pLayerArray>, Field<&T::m_sBaseMaterial, kSinceVersion2>>();
  }
};
