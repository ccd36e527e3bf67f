#include "cli/Records.h"
#include "cli/RowFormat.h"

namespace Bfri {

namespace {

Row allOf( BfTableInfo const& record ) { return rowOf( record ); }

Row tellingOf( BfTableInfo const& record ) {
    Row const row = shownRow( record );
    return { { "HANDLE", valueOf( row, "handle" ) },
             { "SIZE", valueOf( row, "size" ) },
             { "ENTRIES", valueOf( row, "totalEntries" ) },
             { "IDLE BITS", valueOf( row, "idleTimePrecision" ) },
             { "HIT FROM", valueOf( row, "hitBitSmashOffset" ) },
             { "HIT TO", valueOf( row, "hitBitSmashLast" ) },
             { "PARTS", valueOf( row, "maxPartitions" ) },
             { "ACTION DATA", valueOf( row, "adtHandle" ) },
             { "SELECTION", valueOf( row, "selHandle" ) },
             { "PIPE", valueOf( row, "logicalPipe" ) },
             { "NAME", valueOf( row, "name" ) } };
}

} // namespace

void tables( Model const& model, Request const& request, Streams const& io ) {
    printRecords<BfTableInfo>( io.out, request.format, "bfTables", model.parser()->bfTables(), allOf,
                               tellingOf );
}

} // namespace Bfri
