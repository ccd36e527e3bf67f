#pragma once

#include "vessa/Export.h"
#include "vessa/Types.h"

#include <exception>

namespace Vessa {

/// An index past the end of a sequence. what() reads "vector index 7 out of range, size 3".
class VESSA_EXPORT VectorOutOfRange : public std::exception {
  public:
    VectorOutOfRange( U32 index, U32 size );
    ~VectorOutOfRange() override;
    VectorOutOfRange( VectorOutOfRange const& ) = default;
    VectorOutOfRange& operator=( VectorOutOfRange const& ) = default;

    U32 index() const noexcept { return index_; }
    U32 size() const noexcept { return size_; }
    /// Lives as long as the exception.
    char const* what() const noexcept override { return message_.c_str(); }

  private:
    U32 index_;
    U32 size_;
    String message_;
};

/// The last element asked of a sequence that has none. what() reads "vector empty, size 0".
class VESSA_EXPORT VectorEmpty : public std::exception {
  public:
    VectorEmpty() = default;
    ~VectorEmpty() override;
    VectorEmpty( VectorEmpty const& ) = default;
    VectorEmpty& operator=( VectorEmpty const& ) = default;

    char const* what() const noexcept override;
};

} // namespace Vessa
