#pragma once
#include <memory>

#include "Console.h"
#include "board/CBDcomponent.h"
#include "facade/CBDesigner.h"

namespace laminate::cli {

/// A placed component as the board's file would give it: shapes stand on layers of the board, of the type and number
/// that these have there, and hold nothing that no form holds. What is lost on the way is warned of, counted, for
/// `place`. The placed one is as it was afterwards.
std::unique_ptr<CBDcomponent> MakeAsRead(Console& console, const Place& place, CBDcomponent& placed,
                                         const CBDesigner& root);

}  // namespace laminate::cli
