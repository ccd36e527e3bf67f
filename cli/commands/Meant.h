#pragma once

// The messages for a word that does not mean exactly one record, and what --explain says of codes.

#include "cli/grammar/Failure.h"
#include "cli/grammar/Request.h"
#include "cli/terminal/Characters.h"
#include "inspect/page/Search.h"

namespace Bfri {

/// What kind of thing has the names, for messages.
struct Named {
    char const* one;      ///< "match table"
    char const* many;     ///< "tables"
    char const* lister;   ///< the command that lists them
    bool actions = false; ///< actions are among them
};

/// Throws Failure with status no: with the candidates if the word is ambiguous; if it is missing, with the
/// reason or the nearest names.
[[noreturn]] void refuse( Configuration const& configuration, String const& word, Meaning const& meaning,
                          Named const& named );

/// The same with what to type for each.
[[noreturn]] void refuse( String const& word, SeveralRecords const& several );

/// Throws Failure with status usage for a word that is no code of a "finding" or "notice".
[[noreturn]] void refuseCode( char const* noun, String const& word, std::vector<String> const& suggestions );

/// Prints rows of a code's title, severity or level, meaning and advice, perhaps with why it matters.
void printExplanations( List const& rows, Format format, std::ostream& out );

inline bool isMissing( Meaning const& meaning ) { return meaning.is == Meaning::Is::missing; }

template<class... Types>
bool isMissing( std::variant<Types...> const& found ) {
    auto const* const meaning = std::get_if<Meaning>( &found );
    return meaning && isMissing( *meaning );
}

/// Searches for each reading of a word until one is found. Returns that result, or else the result for the
/// word as it is.
template<class Search>
auto foundInReadings( String const& word, Search search ) {
    auto const readings = readingsOf( word );
    auto found = search( readings.front() );
    for( std::size_t i = 1; i < readings.size() && isMissing( found ); ++i ) {
        if( auto other = search( readings[ i ] ); !isMissing( other ) )
            return other;
    }
    return found;
}

} // namespace Bfri
