#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// Changes JSON texts as damage, another compiler or an attacker would: at the members of given names and at
/// elements of arrays. Each is left out, written twice, moved, renamed, emptied, replaced by another type, by
/// a number at the bounds of one, by a copy of another value; names and texts are changed bytewise.
class JsonMutator {
  public:
    /// The names must outlive the mutator.
    explicit JsonMutator( std::span<std::string_view const> names ) : names_( names ) {}

    /// Makes one to four changes to the text in a buffer of `maxSize` bytes and returns the new size; 0, and
    /// the buffer unchanged, when it is no JSON, has no value of that kind, or would not fit.
    std::size_t change( std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed ) const;

    /// A custom mutator as libFuzzer wants it: mostly change(), else, and where that is 0, LLVMFuzzerMutate.
    std::size_t mutate( std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed ) const;

  private:
    std::span<std::string_view const> names_;
};
