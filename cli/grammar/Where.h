#pragma once

#include "inspect/rows/Row.h"

#include <functional>
#include <optional>

namespace Bfri {

using Condition = std::function<bool( Row const& )>;

/// The condition on rows that a text is: "size<4096 and not (name~=^l3 or direct=true)". Values are quoted,
/// or one word. `and` binds more than `or`, and `not` most. Of a list, one element must be so; for !=, none
/// may be equal. A value that is absent equals nothing. A text that is no condition, an unknown field, or a
/// value or an operator that a field can't have is a Failure of status usage that says why. Of the blank row
/// only names and types count.
Condition conditionOf( String const& text, Row const& blank );

/// Where in an unfinished condition the name of a field is being typed; nothing if its end is something else.
std::optional<std::size_t> fieldAtEnd( String const& text, Row const& blank );

} // namespace Bfri
