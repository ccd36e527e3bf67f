#pragma once

#include "resourceinfo/parser/context/Survey.h"

#include <string_view>

namespace Context {

/// Counts the lines of a file that is read buffer after buffer.
class LineCounter {
  public:
    /// Counts as far as a buffer has been taken.
    void countTo( std::string_view taken );
    /// Counts the rest of a buffer; what comes next is in another one.
    void bufferEnds( std::string_view buffer ) {
        countTo( buffer );
        before_ += buffer.size();
        counted_ = 0;
    }
    /// The place of a character that is in the line up to which lines have been counted.
    Place placeOf( std::size_t offset ) const {
        return { offset, line_, static_cast<U32>( offset - lineStart_ + 1 ) };
    }

  private:
    std::size_t before_ = 0;  // characters in front of the buffer
    std::size_t counted_ = 0; // characters of the buffer
    U32 line_ = 1;
    std::size_t lineStart_ = 0;
};

} // namespace Context
