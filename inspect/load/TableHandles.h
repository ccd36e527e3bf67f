#pragma once

#include "resourceinfo/parser/context/Survey.h"

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// Why no table is found that lists a handle, though one must: which tables list it, and whether a second
/// table with one of their handles hides that.
String whoLists( U32 missing, std::vector<Context::SurveyedTable> const& tables );

/// Why a listed handle leads to no placed table: which tables have it.
String whoHas( U32 missing, std::vector<Context::SurveyedTable> const& tables );

} // namespace Bfri
