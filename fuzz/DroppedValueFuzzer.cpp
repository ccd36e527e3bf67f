// Any bytes as a value that is dropped. On the way of its own that the reader has for such values, error,
// place, level of nesting and the number of characters taken must be what they are on the reader's ordinary
// way.

#include "fuzz/JsonMutator.h"
#include "fuzz/Target.h"
#include "resourceinfo/parser/context/MemberNames.h"
#include "tests/support/ContextReading.h"

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    std::string_view const text( reinterpret_cast<char const*>( data ), size );
    auto const expected = Support::ordinaryReading( text, 4096 );
    for( std::size_t const bufferSize : { std::size_t{ 1 }, 2 + size % 61, std::size_t{ 4096 } } )
        require( Support::droppedReading( text, bufferSize ) == expected, "not as on the ordinary way" );
    return 0;
}

std::size_t LLVMFuzzerCustomMutator( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                     unsigned seed ) {
    // Mostly bytewise: it is the syntax that matters here.
    return seed % 8 == 0 ? JsonMutator( Context::memberNames ).mutate( data, size, maxSize, seed / 8 )
                         : LLVMFuzzerMutate( data, size, maxSize );
}
