#include "cli/Names.h"

#include "cli/Failure.h"
#include "cli/Utf8.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <set>
#include <utility>

namespace Bfri {

namespace {

constexpr std::size_t tooFar = std::numeric_limits<std::size_t>::max();

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

std::size_t distance( std::string_view name, std::string_view word ) {
    std::size_t const most = std::max<std::size_t>( 2, word.size() / 3 );
    std::string_view const end = lastParts( name, std::count( word.begin(), word.end(), '.' ) + 1 );
    std::size_t const edits = std::min( editDistance( name, word, most ), editDistance( end, word, most ) );
    bool const within = !word.empty() && name.find( word ) != std::string_view::npos;
    return edits == tooFar && within ? most + 1 : edits;
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
    constexpr std::size_t most = 5;
    std::set<std::pair<std::size_t, String>> found;
    for( String const& name : names ) {
        std::size_t const far = distance( name, word );
        if( far != tooFar )
            found.emplace( far, name );
    }
    std::vector<String> result;
    for( auto const& [ far, name ] : found ) {
        if( result.size() < most )
            result.push_back( name );
    }
    return result;
}

String meantName( std::vector<String> const& names, String const& word, Named const& named ) {
    if( std::find( names.begin(), names.end(), word ) != names.end() )
        return word;
    auto const candidates = namesEndingIn( names, word );
    if( candidates.size() == 1 )
        return candidates.front();
    String const quoted = "'" + shown( word ) + "'";
    if( !candidates.empty() )
        throw Failure( ExitStatus::no,
                       quoted + " is the end of several " + named.many + "' names:", candidates );
    auto const suggestions = nearest( names, word );
    String const hint =
        suggestions.empty() ? String( "; 'bfri " ) + named.lister + "' lists them all" : "; names like it:";
    throw Failure( ExitStatus::no, String( "no " ) + named.one + " " + quoted + hint, suggestions );
}

void noteSeveral( std::vector<String> const& names, String const& name, char const* many,
                  std::ostream& err ) {
    if( auto const count = std::count( names.begin(), names.end(), name ); count > 1 )
        err << "bfri: " << count << " " << many << " have this name; this is the first, as for every query\n";
}

} // namespace Bfri
