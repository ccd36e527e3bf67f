#pragma once

// The sections of the report, in their order on the page.

#include "cli/report/Parts.h"

namespace Bfri {

void writeOverview( Html& html, ReportData const& data ); ///< what can be said in short
void writeChanges( Html& html, ReportData const& data );  ///< of a difference
std::size_t countChanges( Chip const& chip );             ///< the rows of their lists
void writeStages( Html& html, ReportData const& data );   ///< maps and floor plans
void writeFloorPlan( Html& html, Direction const& direction );
void writeRoom( Html& html, ReportData const& data ); ///< the treemap
void writeFindings( Html& html, ReportData const& data );
void writeTables( Html& html, ReportData const& data );   ///< the list of match tables
void writeAttached( Html& html, ReportData const& data ); ///< the list of all other resources and records
void writeFields( Html& html, ReportData const& data );   ///< PHV bytes
void writeHitBits( Html& html, ReportData const& data );
void writeOthers( Html& html, ReportData const& data );     ///< hashes, headers, learn quantas
void writeTablePages( Html& html, ReportData const& data ); ///< a page for each match table

} // namespace Bfri
