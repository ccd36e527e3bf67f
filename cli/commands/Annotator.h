#pragma once

#include "vessa/Types.h"

#include <string_view>
#include <unordered_map>

namespace Bfri {

using Vessa::String;
using Vessa::U32;
using Vessa::U8;

/// The text to write after each handle.
using Notes = std::unordered_map<U32, String>;

/// Copies a text that arrives in parts, cut anywhere, and writes a note after each handle that has one. As
/// the note follows the handle, nothing but a dot at the end of a part has to wait for the next part. A
/// handle is a whole word of letters, digits and "_": a number up to 0xffffffff, hexadecimal with 0x, or
/// decimal from 65536 on (smaller numbers are rarely handles), without a leading zero, and with no digit
/// beyond a dot on either side.
class Annotator {
  public:
    explicit Annotator( Notes notes ) : notes_( std::move( notes ) ) {}

    /// Appends the copy of the next part to out.
    void take( std::string_view part, String& out );
    /// Ends the text: appends the note of the last word, if it has one.
    void end( String& out );

  private:
    enum class State { between, inOtherWord, inNumber, behindDot };

    void begin( char first, char before );
    void add( char c );
    /// The note on the number; null for none.
    String const* note() const;
    /// Appends what had to wait for the end of a word.
    void settle( bool isFraction, String& out ) const;

    Notes const notes_;
    State state_ = State::between;
    char last_ = ' '; ///< character of the previous part
    // Of a number:
    U8 base_ = 10; ///< 0 after a leading zero
    bool digits_ = false;
    std::uint64_t value_ = 0;
};

} // namespace Bfri
