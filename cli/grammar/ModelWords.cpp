#include "cli/grammar/ModelWords.h"

#include "inspect/load/Load.h"
#include "inspect/model/Names.h"
#include "inspect/model/Records.h"

#include <fmt/format.h>
#include <set>
#include <sstream>

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

std::vector<String> namesOf( BfResourceParser const& parser, RecordKind const* kind ) {
    std::set<String> names;
    for( NameOfKind const& name : namesOfKinds( parser ) ) {
        if( !kind || name.kind == kind )
            names.insert( name.name );
    }
    return { names.begin(), names.end() };
}

/// The handles of everything that is placed, or of a kind.
std::set<U32> handlesOf( BfResourceParser const& parser, RecordKind const* kind ) {
    std::set<U32> handles;
    if( !kind ) {
        for( auto const& entry : parser.resourceHandles() )
            handles.insert( entry.first );
        return handles;
    }
    for( Row const& row : kind->rows( parser ) ) {
        if( auto const* const handle = std::get_if<Hex>( &valueOf( row, "handle" ).is ) )
            handles.insert( handle->value );
    }
    return handles;
}

/// Decimal, or hexadecimal with the leading zeros and upper-case letters that the typed text has.
std::vector<String> inFormOf( String const& typed, std::set<U32> const& all ) {
    bool const isDecimal = !typed.empty() && typed[ 0 ] != '0';
    bool const withZeros = typed.size() < 3 || typed[ 2 ] == '0';
    bool const inCapitals = typed.find_first_of( "ABCDEF" ) != String::npos;
    char const* const prefix = typed.starts_with( "0X" ) ? "0X" : "0x";
    std::vector<String> handles;
    for( U32 const handle : all ) {
        if( isDecimal )
            handles.push_back( fmt::to_string( handle ) );
        else
            handles.push_back( prefix + fmt::format( fmt::runtime( inCapitals ? "{:0{}X}" : "{:0{}x}" ),
                                                     handle, withZeros ? 8 : 1 ) );
    }
    return handles;
}

/// The tables that have an action of this name.
std::vector<String> tablesOf( BfResourceParser const& parser, String const& action ) {
    std::set<String> tables;
    for( BfActionInfo const& record : parser.bfActions() ) {
        if( record.name == action )
            tables.insert( record.tableName );
    }
    return { tables.begin(), tables.end() };
}

/// The tables of the action in "ACTION of TABLE"; none when the typed text is no such thing.
std::vector<String> actionTables( BfResourceParser const& parser, TypedWord& typed ) {
    for( ActionWord const& reading : actionWordsIn( typed.rest ) ) {
        auto tables = tablesOf( parser, reading.action );
        if( tables.empty() )
            continue;
        typed.keep( typed.rest.size() - reading.table.size() );
        return tables;
    }
    return {};
}

/// Names of a kind, or of all; handles as well where a digit is typed.
std::vector<String> namesAndHandles( BfResourceParser const& parser, RecordKind const* kind,
                                     TypedWord& typed ) {
    if( !kind || kind->kind == Kind::actions ) {
        if( auto tables = actionTables( parser, typed ); !tables.empty() )
            return tables;
    }
    auto words = namesOf( parser, kind );
    if( !typed.rest.empty() && typed.rest[ 0 ] >= '0' && typed.rest[ 0 ] <= '9' ) {
        auto const handles = inFormOf( typed.rest, handlesOf( parser, kind ) );
        words.insert( words.end(), handles.begin(), handles.end() );
    }
    return words;
}

} // namespace

std::vector<String> modelWords( ParsedLine const& line, ValueKind kind, TypedWord& typed ) {
    Word const* const conf = line.argumentOf( ValueKind::file );
    if( !conf )
        return {};
    std::ostringstream ignored;
    auto const loaded = loadConfiguration( conf->text, Survey::none, ignored );
    auto const* const configuration = std::get_if<Configuration>( &loaded );
    if( !configuration )
        return {};
    auto const& parser = configuration->parser();
    if( kind == ValueKind::handle )
        return inFormOf( typed.rest, handlesOf( parser, nullptr ) );
    return namesAndHandles( parser, kind == ValueKind::table ? &kindOf( Kind::tables ) : line.recordKind(),
                            typed );
}

} // namespace Bfri
