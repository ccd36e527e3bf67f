#pragma once

// Numbers and names as the report shows them.

#include "cli/report/Html.h"
#include "inspect/report/Chip.h"

namespace Bfri {

String grouped( std::uint64_t number );                    ///< "12,345"
String rounded( std::uint64_t number );                    ///< "9,999", "12k", "1.2M"
String roundedFine( std::uint64_t number );                ///< "999", "1.5k", "12.3k", "123k"
String entriesText( std::uint64_t number );                ///< "9,999", "12.3k"
String percent( std::uint64_t part, std::uint64_t whole ); ///< "26 %", "< 0.1 %"
/// "1 stage", "2 stages".
String counted( std::uint64_t number, std::string_view one, std::string_view many = {} );
String handleText( U32 handle );

/// "3–5, 9".
String stagesText( std::vector<StageEntries> const& stages );
/// "stage 3", "stages 3–5, 9", "no stage".
String placeText( ChipResource const& resource );

/// A name in two parts: the path, with its last dot, and the rest.
struct SplitName {
    explicit SplitName( std::string_view name );
    std::string_view path, last;
};

/// How a type of resource looks and reads.
struct TypeStyle {
    Literal css;
    Literal word;
    Literal slug; ///< the word in a list's search
};
TypeStyle const& styleOf( U32 type );

constexpr Literal directionWord( bool ingress ) {
    return ingress ? Literal( "ingress" ) : Literal( "egress" );
}

/// A resource in a few words: what a counter counts, why a match table has no record.
String factsText( Chip const& chip, ChipResource const& resource );

} // namespace Bfri
