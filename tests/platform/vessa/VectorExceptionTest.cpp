#include "vessa/VectorException.h"

#include <gtest/gtest.h>

namespace {

using Vessa::U32;

TEST( VectorOutOfRange, CarriesAndSaysIndexAndSize ) {
    struct {
        U32 index, size;
        char const* what;
    } const rows[] = {
        { 7, 3, "vector index 7 out of range, size 3" },
        { 0, 0, "vector index 0 out of range, size 0" },
        { 0xFFFFFFFF, 0x0FFFFFFF, "vector index 4294967295 out of range, size 268435455" },
    };
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.what );
        Vessa::VectorOutOfRange const exception( row.index, row.size );
        EXPECT_EQ( exception.index(), row.index );
        EXPECT_EQ( exception.size(), row.size );
        EXPECT_STREQ( exception.what(), row.what );
    }
}

TEST( VectorOutOfRange, CopiesCarryTheirOwnText ) {
    Vessa::VectorOutOfRange copy( 1, 1 );
    {
        Vessa::VectorOutOfRange const source( 1000000, 999999 );
        copy = source;
    }
    EXPECT_EQ( copy.index(), 1000000U );
    EXPECT_STREQ( copy.what(), "vector index 1000000 out of range, size 999999" );
}

TEST( VectorEmpty, SaysThatThereIsNothing ) {
    EXPECT_STREQ( Vessa::VectorEmpty().what(), "vector empty, size 0" );
}

TEST( VectorExceptions, AreCaughtAsStandardExceptions ) {
    EXPECT_THROW( throw Vessa::VectorOutOfRange( 1, 0 ), std::exception );
    EXPECT_THROW( throw Vessa::VectorEmpty(), std::exception );
}

} // namespace
