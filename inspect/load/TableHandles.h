#pragma once

#include "resourceinfo/parser/context/Survey.h"

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// Why a table that others must list is not found by its handle: who lists it, and whether a second table
/// with one of the handles hides that.
String whoLists( U32 missing, std::vector<Context::SurveyedTable> const& tables );

/// Why a handle that is listed leads to no placed table: who has it.
String whoHas( U32 missing, std::vector<Context::SurveyedTable> const& tables );

} // namespace Bfri
