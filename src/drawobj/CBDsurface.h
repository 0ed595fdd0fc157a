#pragma once
#include "base/CArrayN.h"
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDopenShape.h"
#include "drawobj/CBDvertex.h"

class CLPropertyArray;

/// A filled outline, an area with heights, or a mesh plane, tag "SURFACE".
///
/// Forms read: "surface", "area" and "meshplane", all with the same keys: (surface (lowerHeight L) (upperHeight L) (net
/// T) (outlineWidth L) (fillWidth L) (fillAngle A) (vertex ...) (openShape ...) (geometry (surface (outlineWidth L)
/// (fillWidth L) (fillAngle A) (alreadySpread) (vertex ...) (openShape ...) (meshBasePoint (pt X Y)) (meshRotatePoint
/// (pt X Y)) (meshPitch L) (meshShape T) (meshShapeDiameter L) (meshArrangeType T) (meshAngle A) (meshFigureAngle A)
/// (meshWindowClearance L) (meshFigureClearance L) (meshOutlineClearance L) (meshFlags N...) (meshFlagXCount N)
/// (submeshplane (submeshparameter ...))))). The keys of "submeshparameter" are the mesh keys with "meshParam" in place
/// of "mesh". "area" and "surface" give the same object. Vertices, cut-outs and flags of all places add up; of other
/// keys the last one counts. Mesh keys count only in the inner form, which is the first one in "geometry", whatever its
/// keyword; none at all raises.
///
/// Written in a geometry: (surface (outlineWidth L) (fillWidth L) (fillAngle A) (alreadySpread YES) (vertex ...)
/// (openShape ...)), or nothing without `HasOutline`. In mode 1 the form (surface (net T) (geometry ...)) stands around
/// it. Where `m_bArea` is 1, (area (upperHeight L) (lowerHeight L) (geometry ...)) stands around it instead, in any
/// mode and around nothing too, and the net is not written. Where `m_bMesh` is 1, any mode writes (meshplane (net T)
/// (geometry (meshplane ...))) with the same outline, however short, and behind it the properties as (NAME VALUE), the
/// values of "meshBasePoint", "meshRotatePoint" and "meshFlags" on lines of their own; no mesh field is written.
class CBDsurface : public CBDdrawObj {
 public:
  CBDsurface();
  CBDsurface(const CBDsurface&) = default;
  CBDsurface& operator=(const CBDsurface&) = default;
  ~CBDsurface() override;

  int m_bArea = 0;           ///< 1: written as an area with heights; set by the placing of a footprint, not by reading
  int m_bMesh = 0;           ///< 1: read from "meshplane"
  int m_bAlreadySpread = 0;  ///< 1: "alreadySpread" was there, whatever it said
  int m_nMeshFlagXCount = 0;
  double m_dLowerHeight = 0;  ///< of an area
  double m_dUpperHeight = 0;
  double m_dOutlineWidth = 0;
  double m_dMeshPitch = 0;  ///< length, as diameters and clearances
  double m_dFillWidth = 0;
  double m_dFillAngle = 0;  ///< degrees, as the mesh angles
  double m_dMeshShapeDiameter = 0;
  double m_dMeshFigureAngle = 0;
  double m_dMeshWindowClearance = 0;
  double m_dMeshFigureClearance = 0;
  double m_dMeshAngle = 0;
  double m_dMeshOutlineClearance = 0;
  CString m_sMeshShape = "CIRCLE";         ///< kept as text
  CString m_sMeshArrangeType = "5POINTS";  ///< kept as text
  CPointD m_ptMeshBase;
  CPointD m_ptMeshRotate;
  CArrayN m_arrMeshFlags;      ///< in file order, not interpreted
  int m_bSubmesh = 0;          ///< 1 once "submeshplane" was seen
  int m_nParamFlagXCount = 0;  ///< this and the rest of the set: of "submeshparameter"
  double m_dParamPitch = 0;
  double m_dParamShapeDiameter = 0;
  double m_dParamFigureAngle = 0;
  double m_dParamWindowClearance = 0;
  double m_dParamFigureClearance = 0;
  double m_dParamAngle = 0;
  double m_dParamOutlineClearance = 0;
  CString m_sParamShape = "CIRCLE";
  CString m_sParamArrangeType = "5POINTS";
  CPointD m_ptParamBase;
  CPointD m_ptParamRotate;
  CArrayN m_arrParamFlags;
  CLPropertyArray* m_pProperties = nullptr;    ///< written for a mesh plane; owned, made by the constructor; for hosts
  CBDvertexArray* m_pVertices = nullptr;       ///< the outline; owned, made by the constructor
  CBDopenShapeArray* m_pOpenShapes = nullptr;  ///< cut-outs; owned, made by the constructor

  /// The text of its own, the net name as it stands; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A deep copy of heights, outline width, fill, vertices and cut-outs. All mesh fields, `m_bArea`, `m_bMesh`,
  /// `m_bAlreadySpread` and the properties stay at their defaults. A null array of vertices or cut-outs raises.
  CBDsurface* pCopy() const;
  /// Moves the cut-outs, then the vertices; the mesh points stay. A null array raises; cut-outs have moved by then.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves, and raises likewise.
  void vSetScale(double dScale);

  /// Whether there are three vertices, or an arc among fewer: without them only a mesh plane is written.
  bool HasOutline() const;
  /// 1 if somewhere in the ring of vertices one arc ends exactly where the next one, an arc too, begins; else 0. A
  /// single arc is held against itself. A null array raises.
  int bChkArcAndArc() const;
  /// Sets `m_dTarc` of every point. A null array raises.
  void vGiveTarcValueForAllElement(double d);

 private:
  void WriteOutline(laminate::TextOut& out) const;
  void WriteProperties(laminate::TextOut& out) const;
};
