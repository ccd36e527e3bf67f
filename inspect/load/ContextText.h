#pragma once

#include "vessa/Types.h"

#include <memory>
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

    Ch Peek() { return begin_ != end_ || fill() ? buffer_[ begin_ ] : '\0'; }
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
    bool atEnd() { return begin_ == end_ && !fill(); }

    /// The line of the next character, from 1; only as long as no value was taken or skipped.
    U32 line() const { return line_; }

    // By members and elements, and in large steps over what nobody asks for. Each of these takes the value
    // that comes; one of another type is passed over. Syntax is not checked: this is for files that were
    // read.

    /// Hands each member's name to `step`, which takes the value.
    template<class Step>
    void eachMember( Step step ) {
        if( next() != '{' )
            return skip();
        Take();
        String name;
        while( next() == '"' ) {
            scalar( name );
            step( name );
        }
        Take();
    }
    /// Calls `step` for each element; it takes the value.
    template<class Step>
    void eachElement( Step step ) {
        if( next() != '[' )
            return skip();
        Take();
        while( next() != ']' && next() != '\0' )
            step();
        Take();
    }
    /// The text of a string, or the characters of a number or word; empty for a container.
    void scalar( String& text );
    String scalar() {
        String text;
        scalar( text );
        return text;
    }
    void skip();
    /// Takes what stands before the value that comes. The first character of that.
    char toValue() { return next(); }

    // The writing half of a stream; never called, since nothing is parsed in place.
    void Put( Ch ) {}
    void Flush() {}
    Ch* PutBegin() { return nullptr; }
    std::size_t PutEnd( Ch* ) { return 0; }

  private:
    bool fill();
    /// The first character of the next token; a NUL at the end. Commas and colons say nothing new.
    char next();
    template<class Find, class Piece>
    void takeUpTo( Find find, Piece piece );
    template<class Piece>
    bool takeScalar( Piece piece );

    std::unique_ptr<gzFile_s, int ( * )( gzFile_s* )> file_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0; // of what is not taken, in the buffer
    std::size_t end_ = 0;
    std::size_t before_ = 0; // characters before the buffer
    U32 line_ = 1;
};

} // namespace Bfri
