#pragma once

#include <cstddef>

namespace Bfri {

/// Finds the end of a container whose first bracket is taken, in JSON that comes piece by piece.
class Nesting {
  public:
    /// The place behind the container's last bracket, or the end of the piece: isOpen() tells which.
    char const* skip( char const* at, char const* end );
    bool isOpen() const { return depth_ > 0; }

  private:
    struct Marks;

    char const* skipBlock( char const* at, Marks const& marks );
    char const* skipBlocks( char const* at, char const* end );
    void skipOne( char c );

    std::size_t depth_ = 1; // of open containers
    bool inString_ = false;
    bool escaped_ = false; // the next character is, by a backslash
};

} // namespace Bfri
