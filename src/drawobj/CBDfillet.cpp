#include "drawobj/CBDfillet.h"

#include "drawobj/ShapeGrammar.h"

CBDfillet::~CBDfillet() = default;

CBDfillet* CBDfillet::pCopy() const { return new CBDfillet(*this); }
