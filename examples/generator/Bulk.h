#pragma once

#include <cstdint>
#include <span>

#include "JsonWriter.h"
#include "Program.h"
#include "Random.h"

namespace bfgen {

/// How much to write of what a compiler notes down for itself: most of a real context file by far, and of no
/// use to those who ask about its resources. It's made up while writing, so that it never takes memory.
struct Bulk {
    Random random;
    uint32_t percent;

    /// The share of a list that would be this long at 100 percent; a short list keeps at least one element.
    uint32_t count( uint32_t full ) const { return ( full * percent + 99 ) / 100; }
    uint32_t countBetween( uint32_t fewest, uint32_t most ) {
        return count( random.between( fewest, most ) );
    }
};

/// The memory that one stage spends on a table.
void writeMemory( JsonWriter& json, Bulk& bulk, StageTable const& stageTable );

/// How an entry of a table lies in a word of the memory.
void writeWordLayout( JsonWriter& json, Bulk& bulk, std::span<Field const> fields );

/// The hash functions that spread exact-match entries over the memory.
void writeHashWays( JsonWriter& json, Bulk& bulk );

/// The states in which the packet is taken apart, for one direction.
void writeParseGraph( JsonWriter& json, Bulk& bulk, bool ingress );

} // namespace bfgen
