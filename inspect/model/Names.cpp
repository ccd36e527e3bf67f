#include "inspect/model/Names.h"

#include "cli/Failure.h"
#include "inspect/rows/Utf8.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <numeric>
#include <set>
#include <utility>

namespace Bfri {

namespace {

constexpr std::size_t tooFar = std::numeric_limits<std::size_t>::max();
constexpr std::size_t mostSuggestions = 5;

bool endsIn( std::string_view name, std::string_view suffix ) {
    if( suffix.empty() || suffix.size() >= name.size() || !name.ends_with( suffix ) )
        return false;
    return suffix.front() == '.' || name[ name.size() - suffix.size() - 1 ] == '.';
}

/// Insertions, deletions and replacements of a byte that make one text of the other; too far when more than
/// `most`.
std::size_t editDistance( std::string_view a, std::string_view b, std::size_t most ) {
    if( std::max( a.size(), b.size() ) - std::min( a.size(), b.size() ) > most )
        return tooFar;
    std::vector<std::size_t> row( b.size() + 1 ); // distances of the part of a so far to each front part of b
    std::iota( row.begin(), row.end(), std::size_t( 0 ) );
    for( std::size_t i = 0; i < a.size(); ++i ) {
        std::size_t diagonal = std::exchange( row[ 0 ], i + 1 );
        for( std::size_t j = 0; j < b.size(); ++j ) {
            std::size_t const replaced = diagonal + ( a[ i ] == b[ j ] ? 0 : 1 );
            diagonal = row[ j + 1 ];
            row[ j + 1 ] = std::min( { replaced, diagonal + 1, row[ j ] + 1 } );
        }
    }
    return row.back() <= most ? row.back() : tooFar;
}

/// The end of a qualified name with as many parts, or all of it.
std::string_view lastParts( std::string_view name, std::ptrdiff_t count ) {
    std::size_t from = name.size();
    while( count-- > 0 && from != std::string_view::npos )
        from = from == 0 ? std::string_view::npos : name.rfind( '.', from - 1 );
    return from == std::string_view::npos ? name : name.substr( from + 1 );
}

String lowerCase( String text ) {
    std::transform( text.begin(), text.end(), text.begin(),
                    []( unsigned char c ) { return static_cast<char>( std::tolower( c ) ); } );
    return text;
}

std::size_t distance( std::string_view name, std::string_view word ) {
    std::size_t const most = std::max<std::size_t>( 2, word.size() / 3 );
    std::string_view const end = lastParts( name, std::count( word.begin(), word.end(), '.' ) + 1 );
    std::size_t const edits = std::min( editDistance( name, word, most ), editDistance( end, word, most ) );
    bool const within = !word.empty() && name.find( word ) != std::string_view::npos;
    return edits == tooFar && within ? most + 1 : edits;
}

/// Nearest first.
std::vector<String> like( std::vector<String> const& names, std::string_view word ) {
    String const wanted = lowerCase( String( word ) );
    std::set<std::pair<std::size_t, String>> found;
    for( String const& name : names ) {
        std::size_t const far = distance( lowerCase( name ), wanted );
        if( far != tooFar )
            found.emplace( far, name );
    }
    std::vector<String> result( found.size() );
    std::transform( found.begin(), found.end(), result.begin(),
                    []( auto const& distanceAndName ) { return distanceAndName.second; } );
    return result;
}

/// Names that a terminal shows otherwise than they are, by what it shows.
std::vector<String> namesShownAs( std::vector<String> const& names, std::string_view word ) {
    std::set<String> found;
    for( String const& name : names ) {
        String const text = escapeForTerminal( name );
        if( text != name && ( text == word || endsIn( text, word ) ) )
            found.insert( name );
    }
    return { found.begin(), found.end() };
}

} // namespace

std::vector<String> namesEndingIn( std::vector<String> const& names, std::string_view suffix ) {
    std::set<String> found;
    for( String const& name : names ) {
        if( endsIn( name, suffix ) )
            found.insert( name );
    }
    return { found.begin(), found.end() };
}

std::vector<String> nearest( std::vector<String> const& names, std::string_view word ) {
    auto result = like( names, word );
    result.resize( std::min( mostSuggestions, result.size() ) );
    return result;
}

std::vector<String> namesMeant( std::vector<String> const& names, String const& word ) {
    if( std::find( names.begin(), names.end(), word ) != names.end() )
        return { word };
    auto ending = namesEndingIn( names, word );
    return ending.empty() ? namesShownAs( names, word ) : ending;
}

String meantName( std::vector<String> const& names, String const& word, Named const& named,
                  std::function<String()> const& whyMissing ) {
    auto const candidates = namesMeant( names, word );
    if( candidates.size() == 1 )
        return candidates.front();
    String const quoted = "'" + escapeForTerminal( word ) + "'";
    if( !candidates.empty() )
        throw Failure( ExitStatus::no,
                       quoted + " is the end of several " + named.many + "' names:", candidates );
    String const missing = String( "no " ) + named.one + " " + quoted;
    if( String const why = whyMissing(); !why.empty() )
        throw Failure( ExitStatus::no, missing + ": " + why );
    auto suggestions = like( names, word );
    if( suggestions.empty() )
        throw Failure( ExitStatus::no, missing + "; 'bfri " + named.lister + "' lists them all" );
    String const count = std::to_string( suggestions.size() );
    bool const tooMany = suggestions.size() > mostSuggestions;
    suggestions.resize( std::min( mostSuggestions, suggestions.size() ) );
    throw Failure( ExitStatus::no,
                   missing +
                       ( tooMany ? "; the nearest of " + count + " names like it:" : "; names like it:" ),
                   suggestions );
}

void noteSeveral( std::vector<String> const& names, String const& name, char const* many,
                  std::ostream& err ) {
    if( auto const count = std::count( names.begin(), names.end(), name ); count > 1 )
        err << "bfri: " << count << " " << many << " have this name; this is the first, as for every query\n";
}

} // namespace Bfri
