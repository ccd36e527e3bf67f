#include "inspect/check/TableLosses.h"

#include <algorithm>

namespace Bfri {

namespace {

constexpr std::string_view tableTypes[] = { "match",      "condition", "action_data", "selection",
                                            "statistics", "meter",     "stateful" };
constexpr std::string_view directions[] = { "ingress", "egress" };
constexpr std::string_view references[] = { "direct", "indirect" };
constexpr std::string_view statistics[] = { "packets", "bytes", "packets_and_bytes" };

bool isOneOf( std::span<std::string_view const> known, String const& word ) {
    return std::find( known.begin(), known.end(), word ) != known.end();
}

/// How the model takes a word for the way of reference that is none of its own.
char const* takenFor( FileTable const& table ) {
    return table.type == "meter" ? ", which the model takes for \"indirect\""
                                 : ", which the model takes for \"direct\"";
}

/// As the model calls it.
char const* recordOf( FileTable const& table ) {
    return table.type == "match"        ? "match table"
           : table.type == "statistics" ? "counter"
           : table.type == "meter"      ? "meter"
           : table.type == "stateful"   ? "register"
                                        : "table";
}

String isWord( char const* member, String const& word ) {
    return String( "its \"" ) + member + "\" is " + quoted( word );
}

} // namespace

void addLosses( FileTable const& table, FileTables const& tables, Losses& losses ) {
    auto const handle = table.handle ? std::optional( *table.handle | tables.pipeBits ) : std::nullopt;
    auto const add = [ & ]( std::vector<Loss>& list, String says ) {
        char const* const what = &list == &losses.leftOut ? "match table" : recordOf( table );
        list.push_back( { what, table.name, handle, std::move( says ), tables.file } );
    };
    bool const placed = handle && tables.parser.resourceHandlesHas( *handle );
    if( String const why = table.whyLeftOut(); !why.empty() )
        add( losses.leftOut, why + ( placed ? "" : "; it has no stage table either" ) );
    if( !placed ) {
        for( FileReference const& reference : table.references )
            losses.unplacedReferrers[ reference.handle | tables.pipeBits ].push_back( table.name );
    }
    if( !isOneOf( tableTypes, table.type ) )
        add( losses.tableTypes, isWord( "table_type", table.type ) + ", which the model does not know" );
    if( !isOneOf( directions, table.direction ) && table.type != "condition" )
        add( losses.directions, isWord( "direction", table.direction ) + ", the model says egress" );
    bool const isCounter = table.type == "statistics";
    bool const isReferenced = isCounter || table.type == "meter" || table.type == "stateful";
    if( isCounter && !isOneOf( statistics, table.statisticsType ) )
        add( losses.words, isWord( "statistics_type", table.statisticsType ) +
                               ", so that it counts neither packets nor bytes" );
    if( isReferenced && !isOneOf( references, table.howReferenced ) )
        add( losses.words, isWord( "how_referenced", table.howReferenced ) + takenFor( table ) );
    for( String const& member : table.repeated )
        add( losses.repeated, quoted( member ) );
}

namespace {

void addAll( std::vector<Loss> const& losses, String const& before, String const& behind,
             Findings& findings ) {
    for( Loss const& loss : losses ) {
        String says = before;
        findings.add( loss.what, loss.name, loss.handle, says.append( loss.says ).append( behind ),
                      loss.file );
    }
}

} // namespace

void findUnknownTableTypes( CheckContext const& facts, Findings& findings ) {
    addAll( facts.losses.tableTypes, "", "", findings );
}

void findUnknownDirections( CheckContext const& facts, Findings& findings ) {
    for( Loss const& loss : facts.losses.directions ) {
        auto const kept = facts.placed.find( loss.handle.value_or( 0 ) );
        if( kept != facts.placed.end() && kept->second->name == loss.name && !kept->second->ingress )
            findings.add( "placed table", loss.name, loss.handle, loss.says, loss.file );
    }
}

void findLeftOutTables( CheckContext const& facts, Findings& findings ) {
    addAll( facts.losses.leftOut, "the model has no record of it and its actions: ", "", findings );
}

void findUnknownWords( CheckContext const& facts, Findings& findings ) {
    addAll( facts.losses.words, "", "", findings );
}

void findRepeatedMembers( CheckContext const& facts, Findings& findings ) {
    addAll( facts.losses.repeated, "has more than one ", ", of which the first counts", findings );
}

} // namespace Bfri
