#include "cli/PlacedStages.h"

#include "cli/ContextText.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <limits>

namespace Bfri {

namespace {

using StageNumbers = std::vector<Stage>;

/// A table as far as it matters here. Of members of one name the first counts, as it does for the library.
struct TableRead {
    std::optional<String> name = {};
    std::optional<std::int64_t> handle = {};
    std::optional<StageNumbers> ofItself = {};
    std::optional<StageNumbers> ofUnits = {};
    std::optional<StageNumbers> ofMatch = {};
};

template<class Value, class Read>
void readFirst( ContextText& text, std::optional<Value>& value, Read read ) {
    if( value )
        text.skip();
    else
        value = read( text );
}

std::optional<std::int64_t> integer( ContextText& text ) {
    String const word = text.scalar();
    std::int64_t number = 0;
    auto const [ rest, error ] = std::from_chars( word.data(), word.data() + word.size(), number );
    bool const isWhole = error == std::errc() && rest == word.data() + word.size();
    return isWhole ? std::optional( number ) : std::nullopt;
}

String word( ContextText& text ) { return text.scalar(); }

/// Calls `step` for the members of a name, whose value it takes.
template<class Step>
void eachNamed( ContextText& text, std::string_view wanted, Step step ) {
    text.eachMember( [ & ]( String const& name ) {
        if( name == wanted )
            step();
        else
            text.skip();
    } );
}

/// The stage tables that the value is an array of.
StageNumbers stageTables( ContextText& text ) {
    StageNumbers numbers;
    text.eachElement( [ & ] {
        std::optional<std::int64_t> number;
        eachNamed( text, "stage_number", [ & ] { readFirst( text, number, integer ); } );
        // Of a number beyond 32 bits the model has the lower ones; it is no stage.
        if( number && *number >= std::numeric_limits<std::int32_t>::min() &&
            *number <= std::numeric_limits<U32>::max() )
            numbers.push_back( static_cast<U32>( *number ) );
    } );
    return numbers;
}

/// The stage tables of all units.
StageNumbers units( ContextText& text ) {
    StageNumbers all;
    text.eachElement( [ & ] {
        std::optional<StageNumbers> numbers;
        eachNamed( text, "match_attributes", [ & ] {
            eachNamed( text, "stage_tables", [ & ] { readFirst( text, numbers, stageTables ); } );
        } );
        if( numbers )
            all.insert( all.end(), numbers->begin(), numbers->end() );
    } );
    return all;
}

TableRead table( ContextText& text ) {
    TableRead result;
    text.eachMember( [ & ]( String const& name ) {
        if( name == "name" )
            readFirst( text, result.name, word );
        else if( name == "handle" )
            readFirst( text, result.handle, integer );
        else if( name == "stage_tables" )
            readFirst( text, result.ofItself, stageTables );
        else if( name == "match_attributes" )
            text.eachMember( [ & ]( String const& inner ) {
                if( inner == "units" )
                    readFirst( text, result.ofUnits, units );
                else if( inner == "stage_tables" )
                    readFirst( text, result.ofMatch, stageTables );
                else
                    text.skip();
            } );
        else
            text.skip();
    } );
    return result;
}

/// Hands the tables of a context file to `step`.
template<class Step>
void eachTable( String const& contextFile, Step step ) {
    ContextText text( contextFile );
    eachNamed( text, "tables", [ & ] { text.eachElement( [ & ] { step( table( text ) ); } ); } );
}

} // namespace

PlacedStages::PlacedStages( BfResourceInfo::BfResourceParser const& parser ) {
    for( auto const& entry : parser.contextFile() ) {
        U32 const lowestPipe = static_cast<U32>( std::countr_zero( entry.key().value() ) ) % 16;
        U32 const pipeBits = parser.bfrtConfig().empty() ? 0 : lowestPipe << 28;
        eachTable( entry.value(), [ & ]( TableRead const& table ) {
            auto const& numbers = table.ofItself  ? table.ofItself
                                  : table.ofUnits ? table.ofUnits
                                                  : table.ofMatch;
            if( table.handle && numbers )
                byHandle_[ static_cast<U32>( *table.handle ) | pipeBits ].push_back(
                    { table.name.value_or( "" ), *numbers } );
        } );
    }
}

std::optional<std::vector<Stage>> PlacedStages::take( BfResource const& resource ) {
    auto& tables = byHandle_[ resource.handle ];
    auto const found = std::find_if( tables.begin(), tables.end(), [ & ]( Table const& table ) {
        return table.name == resource.name && table.stages.size() == resource.stages &&
               !table.stages.empty() && table.stages.front() == resource.stageStart;
    } );
    if( found == tables.end() )
        return std::nullopt;
    std::vector<Stage> stages = std::move( found->stages );
    tables.erase( found );
    std::sort( stages.begin(), stages.end() );
    stages.erase( std::unique( stages.begin(), stages.end() ), stages.end() );
    return stages;
}

} // namespace Bfri
