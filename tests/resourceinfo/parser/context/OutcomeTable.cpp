#include "tests/resourceinfo/parser/context/OutcomeTable.h"

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>

namespace BfResourceInfo {

namespace {

using Texts = std::vector<std::pair<std::string, std::string>>;

/// Adds to the text of a key, after a comma if there is text.
void append( Texts& texts, std::string const& key, std::string const& text ) {
    auto const found =
        std::find_if( texts.begin(), texts.end(), [ & ]( auto const& entry ) { return entry.first == key; } );
    if( found == texts.end() )
        texts.emplace_back( key, text );
    else
        found->second += ", " + text;
}

std::string lines( Texts const& damages ) {
    std::string text;
    for( auto const& [ outcome, names ] : damages )
        text += "  " + outcome + ": " + names + '\n';
    return text;
}

/// Every line of a table, after the place that it is about.
std::set<std::string> linesOf( std::string const& table ) {
    std::set<std::string> lines;
    std::string place;
    std::istringstream text( table );
    for( std::string line; std::getline( text, line ); )
        line.starts_with( "  " ) ? void( lines.insert( place + line ) ) : void( place = line );
    return lines;
}

} // namespace

std::pair<std::string, std::string> splitPointer( std::string const& pointer ) {
    auto const slash = pointer.rfind( '/' );
    return { pointer.substr( 0, slash ), pointer.substr( slash + 1 ) };
}

bool isIndex( std::string_view step ) { return step.find_first_not_of( "0123456789" ) == step.npos; }

std::string seenFrom( std::string const& pointer, std::string const& position ) {
    auto const [ outer, step ] = splitPointer( pointer );
    std::string const inFile = position.substr( 0, position.find( ", table " ) );
    if( inFile == ( outer.empty() ? "" : " at " + outer ) + ", member \"" + step + '"' )
        return "";
    auto const behind = [ & ]( std::string const& start ) -> std::optional<std::string> {
        bool const inside = inFile.starts_with( start ) &&
                            ( inFile + ',' ).find_first_of( "/,", start.size() ) == start.size();
        return inside ? std::optional( inFile.substr( start.size() ) ) : std::nullopt;
    };
    if( auto const rest = behind( " at " + pointer ) )
        return rest->starts_with( '/' ) ? " at ." + *rest : *rest;
    auto const rest = behind( " at " + outer );
    return rest && !isIndex( step ) ? " at .." + *rest : position;
}

std::string difference( std::string const& expected, std::string const& actual ) {
    std::set<std::string> const before = linesOf( expected ), now = linesOf( actual );
    std::string text;
    for( std::string const& line : before )
        text += now.contains( line ) ? "" : "- " + line + '\n';
    for( std::string const& line : now )
        text += before.contains( line ) ? "" : "+ " + line + '\n';
    return text;
}

OutcomeTable::OutcomeTable( Support::JsonTree const& file ) {
    for( std::size_t i = 0; i < file.at( "/tables" ).size(); ++i ) {
        std::string const name = file.at( "/tables/" + std::to_string( i ) + "/name" ).text();
        tables_.push_back( name.substr( 1, name.size() - 2 ) );
    }
}

OutcomeTable::Value OutcomeTable::value( std::string const& pointer ) const {
    Value value{ pointer, "", "", {} };
    std::string rest = pointer;
    while( !rest.empty() ) {
        auto const [ outer, step ] = splitPointer( rest );
        if( isIndex( step ) ) {
            std::string const index = outer == "/tables" ? tables_[ std::stoul( step ) ] : step;
            value.name = index + ( value.name.empty() ? "" : " " + value.name );
        }
        value.place = "/" + ( isIndex( step ) ? "*" : step ) + value.place;
        rest = outer;
    }
    return value;
}

void OutcomeTable::add( std::string const& pointer, std::string const& damage, std::string const& outcome ) {
    if( values_.empty() || values_.back().pointer != pointer )
        values_.push_back( value( pointer ) );
    append( values_.back().damages, outcome, damage );
}

std::string OutcomeTable::text() const {
    std::vector<std::string> places;
    std::vector<Texts> alike; // of each place: the values of the same lines
    for( Value const& value : values_ ) {
        auto const found = std::find( places.begin(), places.end(), value.place );
        auto const index = static_cast<std::size_t>( found - places.begin() );
        if( found == places.end() ) {
            places.push_back( value.place );
            alike.emplace_back();
        }
        append( alike[ index ], lines( value.damages ), value.name );
    }
    std::string result;
    for( std::size_t i = 0; i < places.size(); ++i ) {
        for( auto const& [ text, names ] : alike[ i ] )
            result += places[ i ] + ( alike[ i ].size() > 1 ? " (" + names + ")" : "" ) + '\n' + text + '\n';
    }
    return result;
}

} // namespace BfResourceInfo
