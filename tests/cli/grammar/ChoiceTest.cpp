#include "cli/grammar/Request.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace Bfri;
using testing::ElementsAre;
using testing::IsEmpty;

Row record( char const* name, U32 size, Value value = {} ) {
    return { { "name", name }, { "size", size }, { "value", std::move( value ) } };
}

std::vector<String> namesOf( std::vector<Row> rows, RowSelection const& choice ) {
    choose( rows, choice );
    std::vector<String> names;
    for( Row const& row : rows )
        names.push_back( valueAs<String>( row, "name" ) );
    return names;
}

RowSelection filtered( char const* expression ) { return { Pattern( expression ), {}, RowSelection().most }; }
RowSelection sorted( char const* field, bool descending = false ) {
    return { {}, Order{ field, descending }, RowSelection().most };
}

std::vector<Row> const someTables = { record( "b", 9 ), record( "ab", 10 ), record( "a", 9 ),
                                      record( "c", 100 ) };

TEST( Choosing, NothingLeavesAll ) {
    EXPECT_THAT( namesOf( someTables, {} ), ElementsAre( "b", "ab", "a", "c" ) );
}

TEST( Choosing, ByNameKeepsTheOrder ) {
    EXPECT_THAT( namesOf( someTables, filtered( "b" ) ), ElementsAre( "b", "ab" ) );
    EXPECT_THAT( namesOf( someTables, filtered( "^a" ) ), ElementsAre( "ab", "a" ) );
    EXPECT_THAT( namesOf( someTables, filtered( "z" ) ), IsEmpty() );
    EXPECT_THAT( namesOf( someTables, filtered( "9" ) ), IsEmpty() ); // other fields do not count
    EXPECT_THAT( namesOf( {}, filtered( "" ) ), IsEmpty() );
}

TEST( Choosing, SortsNumbersByValueAndKeepsEqualRowsAsTheyCame ) {
    EXPECT_THAT( namesOf( someTables, sorted( "size" ) ), ElementsAre( "b", "a", "ab", "c" ) );
    EXPECT_THAT( namesOf( someTables, sorted( "size", true ) ), ElementsAre( "c", "ab", "b", "a" ) );
}

TEST( Choosing, SortsTextsByTheirBytes ) {
    std::vector<Row> const rows = { record( "\xC3\xA9", 0 ), record( "b", 0 ),   record( "", 0 ),
                                    record( "B", 0 ),        record( "a.b", 0 ), record( "a", 0 ) };
    EXPECT_THAT( namesOf( rows, sorted( "name" ) ), ElementsAre( "", "B", "a", "a.b", "b", "\xC3\xA9" ) );
    EXPECT_THAT( namesOf( rows, sorted( "name", true ) ),
                 ElementsAre( "\xC3\xA9", "b", "a.b", "a", "B", "" ) );
}

TEST( Choosing, SortsEveryOtherTypeOfValue ) {
    struct {
        Value low;
        Value high;
    } const rows[] = {
        { false, true },
        { Hex( 9 ), Hex( 0xF0000001 ) },
        { {}, U32{ 0 } },
        { {}, "" },
        { {}, false },
        { List{}, List{ Hex( 0 ) } },
        { List{ Hex( 9 ) }, List{ Hex( 10 ) } },
        { List{ Hex( 1 ), Hex( 5 ) }, List{ Hex( 2 ) } },
        { List{ "a" }, List{ "a", "a" } },
    };
    for( auto const& row : rows ) {
        std::vector<Row> const upsideDown = { record( "high", 0, row.high ), record( "low", 0, row.low ) };
        EXPECT_THAT( namesOf( upsideDown, sorted( "value" ) ), ElementsAre( "low", "high" ) );
        EXPECT_THAT( namesOf( upsideDown, sorted( "value", true ) ), ElementsAre( "high", "low" ) );
    }
}

TEST( Choosing, TheFirstComesBehindFilterAndOrder ) {
    EXPECT_THAT( namesOf( someTables, { {}, {}, 2 } ), ElementsAre( "b", "ab" ) );
    EXPECT_THAT( namesOf( someTables, { {}, {}, 0 } ), IsEmpty() );
    EXPECT_THAT( namesOf( someTables, { {}, {}, 4 } ).size(), 4U );
    EXPECT_THAT( namesOf( someTables, { {}, {}, 5 } ).size(), 4U );
    EXPECT_THAT( namesOf( someTables, { Pattern( "[ac]" ), Order{ "size", true }, 2 } ),
                 ElementsAre( "c", "ab" ) );
}

} // namespace
