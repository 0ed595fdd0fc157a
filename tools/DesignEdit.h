#pragma once
#include <string>
#include <string_view>

#include "base/CPointD.h"
#include "facade/CBDesigner.h"

namespace laminate::cli {

/// Why a design cannot be edited in the way that was asked for.
struct EditError {
  std::string reason;
};

// Edits of a design that take along whatever belongs to the object. Each raises `EditError` when there is no such
// object or the new name is taken, and has changed nothing then.

/// Moves a component with its pins and shapes to a location in mm.
void MoveComponent(CBDesigner& root, const std::string& sReference, const CPointD& pt);
/// Turns a component with its pins and shapes about its location until its angle is that one, in degrees. On side B
/// the angle is that of the mirrored board.
void RotateComponent(CBDesigner& root, const std::string& sReference, double dAngle);
/// Renames a component in the board, its nets, the groups, and its own reference texts.
void RenameComponent(CBDesigner& root, const std::string& sReference, const std::string& sNew);
/// Removes a component from the board, its nets and the groups.
void RemoveComponent(CBDesigner& root, const std::string& sReference);
/// Renames a net, and in every shape that is of it.
void RenameNet(CBDesigner& root, const std::string& sNet, const std::string& sNew);

/// Sets a value. The path consists of names of fields as a dump has them, with a point between them, and behind that of
/// an array the name of one of its objects, or its index, in brackets:
/// "m_pBoardContainer.m_pComponentArray[R12].m_dAngle".
void SetValue(CBDesigner& root, const std::string& sPath, const std::string& sValue);

/// A finite number and nothing else.
bool ReadNumber(std::string_view s, double& d);
/// Two of them with a comma in between.
bool ReadPoint(std::string_view s, CPointD& pt);

}  // namespace laminate::cli
