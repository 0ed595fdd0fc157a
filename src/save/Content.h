#pragma once
// Objects by what they hold: two are the same when all fields are that `FieldsOf` lists, with all that they own. Real
// numbers are the same when their bits are, or when neither is a number; addresses play no part.
#include <cstdint>

class CBDboardContainer;
class CBDcomponent;
class CBDdrawObj;
class CBDfootprintContainer;
class CBDlibraryEntities;
class CBDparameter;
class CBDtechnologyContainer;

namespace laminate {

bool SameContent(const CBDcomponent& a, const CBDcomponent& b);
bool SameContent(const CBDdrawObj& a, const CBDdrawObj& b);
bool SameContent(const CBDtechnologyContainer& a, const CBDtechnologyContainer& b);
bool SameContent(const CBDparameter& a, const CBDparameter& b);
bool SameContent(const CBDlibraryEntities& a, const CBDlibraryEntities& b);
bool SameContent(const CBDfootprintContainer& a, const CBDfootprintContainer& b);
/// The board without its components and shapes.
bool SameRecords(const CBDboardContainer& a, const CBDboardContainer& b);
bool SameComponents(const CBDboardContainer& a, const CBDboardContainer& b);
bool SameShapes(const CBDboardContainer& a, const CBDboardContainer& b);

/// A number that is equal for objects that are the same, and as a rule for no others.
std::uint64_t ContentHash(const CBDcomponent& component);
std::uint64_t ContentHash(const CBDdrawObj& shape);

/// The number of the component's fields that differ.
int CountDifferences(const CBDcomponent& a, const CBDcomponent& b);

}  // namespace laminate
