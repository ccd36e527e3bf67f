#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/page/Lookup.h"

#include <ostream>

namespace Bfri {

/// A line for each record that has one of the handles.
void printHandles( std::ostream& out, TerminalStyle const& look, std::vector<HandleAnswer> const& answers );

/// What else there is to say of a handle, which was asked for by a word: what may be meant where nothing has
/// it, and what the model omits. Whether a runtime_config puts pipes into handles decides the words.
void printRemarks( std::ostream& err, String const& word, HandleAnswer const& answer, bool pipesInHandles );

} // namespace Bfri
