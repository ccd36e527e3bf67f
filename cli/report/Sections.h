#pragma once

// The sections of the report, in their order on the page.

#include "cli/report/Parts.h"

namespace Bfri {

void writeTop( Html& html, ReportData const& data );       ///< title, and a sentence about the page
void writeVerdict( Html& html, ReportData const& data );   ///< of a difference
void writeSoundness( Html& html, ReportData const& data ); ///< findings in short
void writePrograms( Html& html, ReportData const& data );  ///< what runs on which pipes
void writeFacts( Html& html, ReportData const& data );     ///< how many records of each kind
void writeChanges( Html& html, ReportData const& data );   ///< of a difference
void writeStages( Html& html, ReportData const& data );    ///< maps and floor plans
void writeRoom( Html& html, ReportData const& data );      ///< the treemap
void writeFindings( Html& html, ReportData const& data );
void writeTables( Html& html, ReportData const& data );   ///< the list of match tables
void writeAttached( Html& html, ReportData const& data ); ///< the list of all other resources and records
void writeFields( Html& html, ReportData const& data );   ///< PHV bytes
void writeHitBits( Html& html, ReportData const& data );
void writeOthers( Html& html, ReportData const& data );     ///< hashes, headers, learn quantas
void writeTablePages( Html& html, ReportData const& data ); ///< a page for each match table

/// The map of stages by kinds, and the floor plan below it, of one direction.
void writeStageMap( Html& html, ReportData const& data, ChipProgram const& program, bool ingress );
void writeFloorPlan( Html& html, ReportData const& data, ChipProgram const& program, bool ingress );

} // namespace Bfri
