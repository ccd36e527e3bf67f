#pragma once

#include "vessa/Types.h"

#include <memory>
#include <span>
#include <string_view>
#include <vector>

struct gzFile_s; // zlib's open file

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// The characters of a file, plain or gzip, as RapidJSON's readers take them; a NUL at their end. A file that
/// cannot be read, as any that is not regular, ends where the reading does.
class ContextText {
  public:
    using Ch = char;

    explicit ContextText( String const& path );

    Ch Peek() { return begin_ != end_ || fill( 0 ) ? buffer_[ begin_ ] : '\0'; }
    Ch Take() {
        Ch const c = Peek();
        if( begin_ == end_ )
            return c;
        ++begin_;
        if( c == '\n' )
            ++line_;
        return c;
    }
    std::size_t Tell() const { return before_ + begin_; }
    bool atEnd() { return begin_ == end_ && !fill( 0 ); }

    /// The line of the next character, from 1; only as long as skipToName() was not called.
    U32 line() const { return line_; }

    /// Takes everything up to a member of one of these names and its colon, at whatever depth; returns which,
    /// or the number of names when there is none any more.
    template<std::size_t count>
    std::size_t skipToName( std::string_view const ( &names )[ count ] ) {
        static_assert( count <= mostNames );
        return skipToAny( names );
    }
    static constexpr std::size_t mostNames = 4;

    // The writing half of a stream; never called, since nothing is parsed in place.
    void Put( Ch ) {}
    void Flush() {}
    Ch* PutBegin() { return nullptr; }
    std::size_t PutEnd( Ch* ) { return 0; }

  private:
    struct Match {
        std::size_t name;
        std::size_t at;
    };

    bool fill( std::size_t kept );
    std::size_t skipToAny( std::span<std::string_view const> names );
    /// The first place of one of the names in quotes in the buffer, from a place in it on.
    Match firstOf( std::span<std::string_view const> names, std::size_t from ) const;
    bool takeColon();

    std::unique_ptr<gzFile_s, int ( * )( gzFile_s* )> file_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0; // of what is not taken, in the buffer
    std::size_t end_ = 0;
    std::size_t before_ = 0; // characters before the buffer
    U32 line_ = 1;
};

} // namespace Bfri
