#include "vessa/VectorException.h"

namespace Vessa {

VectorOutOfRange::VectorOutOfRange( U32 index, U32 size )
    : index_( index ),
      size_( size ),
      message_( "vector index " + std::to_string( index ) + " out of range, size " +
                std::to_string( size ) ) {}

VectorOutOfRange::~VectorOutOfRange() = default;

VectorEmpty::~VectorEmpty() = default;

char const* VectorEmpty::what() const noexcept { return "vector empty, size 0"; }

} // namespace Vessa
