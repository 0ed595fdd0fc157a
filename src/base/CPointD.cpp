#include "base/CPointD.h"

#include <cmath>

void CPointD::MoveRotate(const double& dX, const double& dY, const double& dAngle) {
  const double dShiftX = dX;  // the arguments may be this point's own coordinates
  const double dShiftY = dY;
  if (dAngle != 0) {
    const double dTurn = std::fmod(dAngle, 360.0);
    const double dOldX = x;
    const double dOldY = y;
    if (dTurn == 0) {
      // A whole turn.
    } else if (dTurn == 90 || dTurn == -270) {
      x = 0.0 - dOldY;  // no negative zero, as by the turning formula
      y = dOldX;
    } else if (dTurn == 180 || dTurn == -180) {
      x = 0.0 - dOldX;
      y = 0.0 - dOldY;
    } else if (dTurn == 270 || dTurn == -90) {
      x = dOldY;
      y = 0.0 - dOldX;
    } else {
      constexpr double kRadian = 3.14159265358979323846 / 180.0;
      const double dCos = std::cos(dTurn * kRadian);
      const double dSin = std::sin(dTurn * kRadian);
      x = dOldX * dCos - dOldY * dSin;
      y = dOldX * dSin + dOldY * dCos;
    }
  }
  // A shift of negative zero would turn a negative zero of the point into a positive one.
  if (dShiftX != 0) x -= dShiftX;
  if (dShiftY != 0) y -= dShiftY;
}
