// The lists: match tables, and all other resources and records.

#include "cli/report/Listing.h"
#include "cli/report/Sections.h"

namespace Bfri {

namespace {

void addRange( OwnText& ranges, ChipProgram const& program, std::size_t first, std::size_t end ) {
    if( first == end )
        return;
    if( !ranges.view().empty() )
        ranges += OwnText( ";" );
    for( U32 const pipe : program.pipes )
        ranges += own( "{}{}", when( pipe != program.pipes.front(), " " ), pipe );
    ranges += own( ":{}-{}", first, end - 1 );
}

void writeKindCell( Html& html, ChipResource const* resource ) {
    html.open( "td" );
    if( resource ) {
        writeSwatch( html, resource->type );
        html.text( styleOf( resource->type ).word.view() );
    } else
        html.leaf( "span", { { "class", "mut" } }, "not placed" );
    html.close();
}

void writeMarkCell( Html& html, Marks marks ) {
    html.open( "td" );
    writeMarks( html, marks );
    html.close();
}

void writeTableCells( Html& html, ReportData const& data, ChipTable const& table, bool inFull,
                      std::uint64_t most ) {
    ChipResource const* const place = table.resource ? &data.chip.resources[ *table.resource ] : nullptr;
    BfTableInfo const& record = *table.record;
    html.open( "td" ).open( "a", { { "href", own( "#t{}", table.number ) } } );
    if( inFull )
        writeName( html, record.name );
    else
        writeStrong( html, SplitName( record.name ).last );
    html.close().close().leaf( "td", handleText( record.handle ) );
    writeKindCell( html, place );
    html.leaf( "td", place ? directionWord( place->ingress ).view() : "–" );
    writeStageCell( html, data.chip, place );
    writeWeightCell( html, record.size, most );
    writeNumberCell( html, table.actions.size() );
    writeNumberCell( html, table.attached.size() );
    writeNumberCell( html, record.hitBitSupported ? record.idleTimePrecision : 0 );
    if( data.isDiff() )
        writeMarkCell( html, table.marks );
}

void writeOwners( Html& html, Chip const& chip, ChipResource const& resource ) {
    constexpr std::size_t most = 3;
    html.open( "td" );
    for( std::size_t i = 0; i < std::min( most, resource.owners.size() ); ++i )
        html.text( i ? ", " : "" )
            .leaf( "a", { linkTo( resource.owners[ i ] ) },
                   SplitName( chip.nameOf( resource.owners[ i ] ) ).last );
    if( resource.owners.size() > most )
        html.text( " +" + grouped( resource.owners.size() - most ) );
    html.text( resource.owners.empty() ? "–" : "" ).close();
}

void writeResourceCells( Html& html, ReportData const& data, ChipResource const& resource, bool inFull,
                         std::uint64_t most ) {
    html.open( "td" );
    if( inFull ) {
        html.open( "span", { { "class", "a" } } );
        writeName( html, resource.name() );
        html.close();
    } else
        writeStrong( html, SplitName( resource.name() ).last );
    html.close().leaf( "td", handleText( resource.handle ) );
    writeKindCell( html, &resource );
    html.leaf( "td", directionWord( resource.ingress ).view() );
    writeStageCell( html, data.chip, &resource );
    writeWeightCell( html, resource.size, most );
    writeOwners( html, data.chip, resource );
    html.leaf( "td", factsText( data.chip, resource ) );
    if( data.isDiff() )
        writeMarkCell( html, resource.marks );
}

std::uint64_t mostOf( std::vector<ListRow> const& rows ) {
    std::uint64_t most = 1;
    for( ListRow const& row : rows )
        most = std::max( most, row.weight );
    return most;
}

void addMarkColumn( Listing& listing, ReportData const& data ) {
    if( data.isDiff() )
        listing.columns.push_back( { "Change", 64 } );
}

} // namespace

void writeTables( Html& html, ReportData const& data ) {
    Listing listing{ "Ltables",
                     "l",
                     { { "Name" },
                       { "Handle", 98 },
                       { "Kind", 168 },
                       { "Direction", 74 },
                       { "Stages", 92 },
                       { "Entries", 96, "w" },
                       { "Actions", 66, "n" },
                       { "Attached", 72, "n" },
                       { "Idle bits", 70, "n" } },
                     {},
                     OwnText( "" ),
                     {} };
    addMarkColumn( listing, data );
    for( ChipTable const& table : data.chip.tables )
        listing.rows.push_back( { table.number, table.record->name, table.record->size } );
    for( ChipProgram const& program : data.chip.programs )
        addRange( listing.ranges, program, program.firstTable, program.endTable );
    std::uint64_t const most = mostOf( listing.rows );
    listing.writeCells = [ & ]( ListRow const& row, bool inFull ) {
        writeTableCells( html, data, data.chip.tables[ row.number ], inFull, most );
    };
    writeListing( html, listing );
}

void writeAttached( Html& html, ReportData const& data ) {
    Listing listing{ "Lattached",
                     "r",
                     { { "Name" },
                       { "Handle", 98 },
                       { "Kind", 118 },
                       { "Direction", 74 },
                       { "Stages", 92 },
                       { "Size", 84, "w" },
                       { "Of table", 190 },
                       { "What", 150 } },
                     {},
                     OwnText( "" ),
                     {} };
    addMarkColumn( listing, data );
    for( ChipResource const& resource : data.chip.resources ) {
        if( !resource.table )
            listing.rows.push_back( { resource.number, resource.name(), resource.size } );
    }
    for( ChipProgram const& program : data.chip.programs )
        addRange( listing.ranges, program, program.firstResource, program.endResource );
    std::uint64_t const most = mostOf( listing.rows );
    listing.writeCells = [ & ]( ListRow const& row, bool inFull ) {
        writeResourceCells( html, data, data.chip.resources[ row.number ], inFull, most );
    };
    writeListing( html, listing );
}

} // namespace Bfri
