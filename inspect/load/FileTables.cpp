#include "inspect/load/FileTables.h"

#include "resourceinfo/parser/context/MemberNames.h"

#include <algorithm>
#include <limits>

namespace Bfri {

std::optional<U32> handleOf( FirstMembers& text ) {
    auto const number = wholeNumber( text.literal() );
    bool const fits = number && *number >= 0 && *number <= std::numeric_limits<U32>::max();
    return fits ? std::optional( static_cast<U32>( *number ) ) : std::nullopt;
}

namespace {

std::size_t elements( FirstMembers& text ) {
    std::size_t count = 0;
    text.eachElement( [ & ] {
        text.walk();
        ++count;
    } );
    return count;
}

/// The stage tables of one array, or of all units.
struct StageTables {
    std::size_t count = 0;
    std::vector<std::int64_t> numbers = {};
    std::vector<String> odd = {};
};

/// "its "stage_tables/1" has a "stage_number" of 1.5".
String oddStage( String const& stageTable, std::optional<String> const& literal ) {
    String const front = "its \"" + stageTable + "\" has ";
    if( !literal )
        return front + "no \"stage_number\"";
    return front + "a \"stage_number\" " + ( literal->empty() ? "that is no number" : "of " + *literal );
}

void readStageTable( FirstMembers& text, StageTables& all ) {
    std::optional<String> literal;
    text.eachMember( [ & ]( std::string_view name ) {
        if( name == "stage_number" )
            literal = text.literal();
        else
            text.walk();
    } );
    auto const number = literal ? wholeNumber( *literal ) : std::nullopt;
    if( number )
        all.numbers.push_back( *number );
    bool const isStage = number && *number >= 0 && *number <= 255;
    if( all.count++ > 0 && !isStage )
        all.odd.push_back( oddStage( text.path(), literal ) );
}

void readStageTables( FirstMembers& text, StageTables& all ) {
    text.eachElement( [ & ] { readStageTable( text, all ); } );
}

void readUnit( FirstMembers& text, StageTables& all ) {
    text.eachMember( [ & ]( std::string_view name ) {
        if( name != "match_attributes" )
            return text.walk();
        text.eachMember( [ & ]( std::string_view inner ) {
            if( inner == "stage_tables" )
                readStageTables( text, all );
            else
                text.walk();
        } );
    } );
}

/// Those of the units, where there are such.
StageTables matchStageTables( FirstMembers& text ) {
    StageTables ofMatch;
    std::optional<StageTables> ofUnits;
    text.eachMember( [ & ]( std::string_view name ) {
        if( name == "stage_tables" )
            readStageTables( text, ofMatch );
        else if( name == "units" )
            text.eachElement( [ &, &all = ofUnits.emplace() ] { readUnit( text, all ); } );
        else
            text.walk();
    } );
    return ofUnits ? *ofUnits : ofMatch;
}

void add( StageTables stageTables, FileTable& table ) {
    table.stageTables += stageTables.count;
    table.stages = std::move( stageTables.numbers );
    table.oddStages = std::move( stageTables.odd );
}

/// The name and the handle of the object that comes.
FileName nameAndHandle( FirstMembers& text ) {
    FileName result;
    text.eachMember( [ & ]( std::string_view member ) {
        if( member == "name" )
            result.name = text.scalar();
        else if( member == "handle" )
            result.handle = handleOf( text );
        else
            text.walk();
    } );
    return result;
}

void readReferences( FirstMembers& text, std::string_view list, FileTable& table ) {
    text.eachElement( [ & ] {
        if( auto const handle = nameAndHandle( text ).handle )
            table.references.push_back( { String( list ), *handle } );
    } );
}

struct Word {
    std::string_view member;
    String FileTable::*text;
};

constexpr Word words[] = { { "name", &FileTable::name },
                           { "table_type", &FileTable::type },
                           { "direction", &FileTable::direction },
                           { "how_referenced", &FileTable::howReferenced },
                           { "statistics_type", &FileTable::statisticsType } };

void readMember( FirstMembers& text, std::string_view member, Detail detail, FileTable& table ) {
    auto const word = std::find_if( std::begin( words ), std::end( words ),
                                    [ & ]( Word const& w ) { return w.member == member; } );
    if( word != std::end( words ) )
        table.*word->text = text.scalar();
    else if( member == "handle" )
        table.handle = handleOf( text );
    else if( member == "is_resource_controllable" )
        table.controllable = text.scalar() != "false";
    else if( member == "static_entries" )
        table.staticEntries = elements( text );
    else if( member.ends_with( "_table_refs" ) )
        readReferences( text, member, table );
    else if( member == "actions" && detail == Detail::full )
        text.eachElement( [ & ] { table.actions.push_back( nameAndHandle( text ) ); } );
    else if( member == "stage_tables" ) {
        StageTables all;
        readStageTables( text, all );
        add( std::move( all ), table );
    } else if( member == "match_attributes" )
        add( matchStageTables( text ), table );
    else
        text.walk();
}

} // namespace

FirstMembers passedMembers( ContextText& text ) { return { text, Context::memberNameOf }; }

FileTable fileTable( ContextText& text, Detail detail ) {
    FileTable table;
    FirstMembers members = passedMembers( text );
    members.eachMember( [ & ]( std::string_view member ) { readMember( members, member, detail, table ); } );
    table.repeated = members.repeated();
    return table;
}

String FileTable::whyLeftOut() const {
    if( type != "match" )
        return "";
    String why;
    if( staticEntries > 0 )
        why = "it has " + std::to_string( staticEntries ) +
              ( staticEntries == 1 ? " static entry" : " static entries" );
    if( !controllable )
        why += String( why.empty() ? "" : ", and " ) + "its \"is_resource_controllable\" is false";
    return why;
}

} // namespace Bfri
