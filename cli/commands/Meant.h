#pragma once

// What is said of a word that does not mean one record.

#include "cli/grammar/Failure.h"
#include "cli/terminal/Characters.h"
#include "inspect/page/Search.h"

namespace Bfri {

/// What names belong to, for messages.
struct Named {
    char const* one;      ///< "match table"
    char const* many;     ///< "tables"
    char const* lister;   ///< the command that lists them
    bool actions = false; ///< actions are among them
};

/// A Failure of status no: the candidates of an ambiguous word; of a missing one why it is, or the nearest
/// names.
[[noreturn]] void refuse( Configuration const& configuration, String const& word, Meaning const& meaning,
                          Named const& named );

/// The same with what to type for each.
[[noreturn]] void refuse( String const& word, SeveralRecords const& several );

inline bool isMissing( Meaning const& meaning ) { return meaning.is == Meaning::Is::missing; }

template<class... Types>
bool isMissing( std::variant<Types...> const& found ) {
    auto const* const meaning = std::get_if<Meaning>( &found );
    return meaning && isMissing( *meaning );
}

/// The result of a search for a word in the first of its readings that is not missing; else for the word as
/// it is.
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
