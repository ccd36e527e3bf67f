#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/page/Lookup.h"
#include "inspect/page/Page.h"

namespace Bfri {

/// The pages, with a heading for each part of a record.
void printPages( std::ostream& out, TerminalStyle const& look, std::vector<Page> const& pages );

/// Where a record is on the chip; "no" for null.
String placeText( BfResource const* place );

/// One line for each record that has one of the handles.
void printHandles( std::ostream& out, TerminalStyle const& look, std::vector<HandleAnswer> const& answers );

/// Notes on the handle that a word means: what else may be meant if nothing has it, and what the model
/// omits. The wording depends on whether a runtime_config puts pipes into handles.
void printRemarks( std::ostream& err, String const& word, HandleAnswer const& answer, bool pipesInHandles );

} // namespace Bfri
