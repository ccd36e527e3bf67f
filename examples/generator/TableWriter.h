#pragma once

#include <string_view>

#include "Bulk.h"
#include "JsonWriter.h"
#include "Program.h"

namespace bfgen {

/// One element of the list of tables.
void writeTable( JsonWriter& json, Bulk& bulk, Table const& table );

/// The members of a match table beyond those that all tables share.
void writeMatch( JsonWriter& json, Bulk& bulk, Table const& table, Match const& match );

/// The actions of a match table.
void writeActions( JsonWriter& json, Bulk& bulk, Match const& match );

/// What every stage table tells, whichever the kind of its table; for the caller to add to.
void writeStagePart( JsonWriter& json, Bulk& bulk, StageTable const& stageTable );

std::string_view howText( How how );

} // namespace bfgen
