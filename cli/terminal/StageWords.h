#pragma once

// What the texts about stages share.

#include "cli/terminal/Characters.h"
#include "cli/terminal/TerminalStyle.h"
#include "inspect/model/Records.h"
#include "inspect/stages/StageMap.h"

#include <array>

namespace Bfri {

struct Symbols {
    char const* nothing;
    char const* taken;
    std::array<char const*, 9> levels; ///< from empty to full
};

inline Symbols const& symbolsOf( TerminalStyle const& look ) {
    static constexpr Symbols ascii = { ".", "#", { " ", ".", ":", "-", "=", "+", "*", "#", "@" } };
    static constexpr Symbols utf8 = { "·", "█", { " ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█" } };
    return look.utf8 ? utf8 : ascii;
}

inline String toTheRight( String const& text, std::size_t columns ) {
    return String( columns - std::min( columns, width( text ) ), ' ' ) + text;
}

inline String toTheLeft( String const& text, std::size_t columns ) {
    return text + String( columns - std::min( columns, width( text ) ), ' ' );
}

inline char const* directionOf( bool ingress ) { return ingress ? "ingress" : "egress"; }

/// A part of a whole in whole percent: "12%"; "0%" if the whole is 0.
inline String percentText( std::uint64_t part, std::uint64_t all ) {
    return std::to_string( all == 0 ? 0 : ( 100 * part + all / 2 ) / all ) + "%";
}

inline String typeOf( StageGroup const& group ) { return typeNameOf( *group.resources.front().resource ); }

} // namespace Bfri
