#pragma once

#include <cstddef>

/// The memory of this program: what it holds by operator new and from the slabs, and a lack of memory on
/// demand. For one thread.
namespace Memory {

/// Blocks that were not given back, their bytes, and the most of these since the last call of peakIsNow().
std::size_t blocks();
std::size_t bytes();
std::size_t peak();
void peakIsNow();

/// While it lives, allocations fail: the one after so many others, and, if told so, all further ones.
class Lack {
  public:
    Lack( std::size_t others, bool lasting );
    Lack( Lack const& ) = delete;
    Lack& operator=( Lack const& ) = delete;
    ~Lack();

    /// Whether an allocation failed.
    bool struck() const;
};

} // namespace Memory
