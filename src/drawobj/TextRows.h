#pragma once
// The rows of the inner "text" form, which a text and a symbol text share but for the five that are handed in.
#include "drawobj/CBDtext.h"
#include "reader/Grammar.h"

namespace laminate {

template <class String, class Justify, class Flip, class Reverse, class FrameOffset>
consteval auto MakeTextForm(String string, Justify justify, Flip flip, Reverse reverse, FrameOffset frameOffset) {
  return MakeForm<CBDtext>(string, Integer<&CBDtext::m_nFont>("font"), Integer<&CBDtext::m_nKFont>("kFont"),
                           Length<&CBDtext::m_dWidth>("width"), Length<&CBDtext::m_dHeight>("height"),
                           Length<&CBDtext::m_dSpace>("space"), Length<&CBDtext::m_dVSpace>("vSpace"),
                           Length<&CBDtext::m_dStrokeWidth>("strokeWidth"), Point<&CBDtext::m_pt>("pt"),
                           Real<&CBDtext::m_dAngle>("textAngle"), Text<&CBDtext::m_sDir>("dir"), justify, flip, reverse,
                           frameOffset);
}

}  // namespace laminate
