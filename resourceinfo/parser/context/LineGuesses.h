#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Context {

/// Guesses how a line of pretty-printed JSON starts: as the last line at the same place of the structure did.
/// A guess counts only where the text agrees with it: a wrong one costs time and nothing else. With a guess
/// the processor goes on while it compares; for the result of a search it waits. Looks at 64 characters.
class LineGuesses {
  public:
    /// The first character of the next line when a line ends here, and the next has the usual indentation of
    /// its level; else null.
    char const* afterIndentation( char const* lineEnd, unsigned level ) const {
        unsigned const spaces = indentations_[ level % levels ];
        bool const agrees = *lineEnd == '\n' && std::memcmp( lineEnd + 1, blank, spaces ) == 0 &&
                            isText( lineEnd[ 1 + spaces ] );
        return agrees ? lineEnd + 1 + spaces : nullptr;
    }
    /// Notes white space, if it may be a line end with the indentation of a level: the text may be in another
    /// buffer.
    void noteIndentation( char const* space, char const* text, unsigned level ) {
        if( *space == '\n' && text > space && text - space <= most )
            indentations_[ level % levels ] = static_cast<std::uint8_t>( text - space - 1 );
    }

    /// The value of a member of an object when its name, up to the value, is the usual one of that member;
    /// else null. `level` is the object's, `member` counts its members.
    char const* afterName( char const* name, unsigned level, unsigned member ) const {
        Name const& usual = names_[ slot( level, member ) ];
        bool const agrees = usual.size > 0 && std::memcmp( name, usual.text, usual.size ) == 0 &&
                            isText( name[ usual.size ] );
        return agrees ? name + usual.size : nullptr;
    }
    /// Notes a name, with all up to the value, if it is not too long.
    void noteName( char const* name, char const* value, unsigned level, unsigned member ) {
        if( value - name > most )
            return;
        Name& usual = names_[ slot( level, member ) ];
        usual.size = static_cast<std::uint8_t>( value - name );
        std::memcpy( usual.text, name, most ); // always so many: no loop
    }

  private:
    static constexpr std::ptrdiff_t most = 63;
    static constexpr unsigned levels = 64;
    static constexpr char blank[] = "                                                               ";
    static_assert( sizeof blank == most + 1 );

    struct Name {
        std::uint8_t size = 0;
        char text[ most ];
    };

    static bool isText( char c ) { return static_cast<unsigned char>( c ) > ' '; }
    /// Different places may share a slot.
    static std::size_t slot( unsigned level, unsigned member ) { return ( level * 13 + member ) % 256; }

    std::array<std::uint8_t, levels> indentations_{};
    std::array<Name, 256> names_;
};

} // namespace Context
