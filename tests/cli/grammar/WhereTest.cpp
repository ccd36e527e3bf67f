#include "cli/grammar/Where.h"

#include "cli/grammar/Failure.h"

#include <gmock/gmock.h>

namespace {

using Bfri::Hex;
using Bfri::List;
using Bfri::Row;
using Bfri::Value;
using Vessa::String;
using Vessa::U32;

Row rowOfATable() {
    return { { "name", "l3.acl" },
             { "size", U32{ 4096 } },
             { "handle", Hex( 0x1000001 ) },
             { "direct", true },
             { "parent", Value() },
             { "kinds", List{ "table", "resource" } },
             { "references", List{ Hex( 7 ), Hex( 9 ) } },
             { "entries", std::int64_t{ 5000000000 } } };
}

bool holds( char const* condition ) {
    Row const row = rowOfATable();
    return Bfri::conditionOf( condition, row )( row );
}

TEST( AConditionOnRows, HoldsByTheFieldsType ) {
    for( char const* const condition :
         { "size=4096",      "size == 4096",     "size<4097",       "size<=4096",         "size>4095",
           "size >= 0x1000", "size!=1",          "handle=16777217", "handle=0x1000001",   "direct=true",
           "direct=yes",     "direct!=false",    "name=l3.acl",     "name='l3.acl'",      "name=\"l3.acl\"",
           "name~=^l3",      "name~=(acl|lpm)$", "name>l2",         "kinds=table",        "kinds=resource",
           "kinds~=^tab",    "references=9",     "references>8",    "entries>4294967296", "parent!=x" } )
        EXPECT_TRUE( holds( condition ) ) << condition;
    for( char const* const condition :
         { "size=4095", "size<4096", "size>4096", "size!=4096", "handle=1", "direct=false", "direct!=true",
           "name=l3", "name~=^acl", "kinds=counter", "kinds!=table", "references=8", "parent=x", "parent=''",
           "parent<x", "entries<5000000000" } )
        EXPECT_FALSE( holds( condition ) ) << condition;
}

TEST( AConditionOnRows, HasAndBeforeOrAndNotBeforeBoth ) {
    for( char const* const condition :
         { "size=1 or size=4096", "size=4096 and name~=acl", "not size=1", "not not size=4096",
           "size=4096 or size=1 and size=2", "(size=4096 or size=1) and direct=true",
           "not (size=1 or size=2)", "not size=1 and size=4096", "( name~=(l3) )",
           "size = 4096  and direct=true or size=1 " } )
        EXPECT_TRUE( holds( condition ) ) << condition;
    for( char const* const condition : { "(size=4096 or size=1) and size=2", "not size=4096 or size=2",
                                         "not (size=4096)", "size=4096 and size=1 or size=2" } )
        EXPECT_FALSE( holds( condition ) ) << condition;
}

String refusal( String const& condition ) {
    try {
        Bfri::conditionOf( condition, rowOfATable() );
        return "none";
    } catch( Bfri::Failure const& failure ) {
        EXPECT_EQ( failure.status, Bfri::ExitStatus::usage );
        return failure.what();
    }
}

TEST( AConditionOnRows, ThatIsNoneSaysWhy ) {
    EXPECT_EQ( refusal( "sice=1" ),
               "--where: no field 'sice'; the fields are name, size, handle, direct, parent, "
               "kinds, references, entries" );
    EXPECT_THAT( refusal( "" ),
                 testing::StartsWith( "--where: expected a field, found the end; the fields are " ) );
    EXPECT_EQ( refusal( "size" ), "--where: expected =, !=, <, <=, >, >= or ~=, found the end" );
    EXPECT_EQ( refusal( "size ! 4" ), "--where: expected =, !=, <, <=, >, >= or ~=, found '! 4'" );
    EXPECT_EQ( refusal( "size=" ), "--where: expected a value, found the end" );
    EXPECT_EQ( refusal( "(size=1" ), "--where: expected ')', found the end" );
    EXPECT_EQ( refusal( "size=1)" ), "--where: expected 'and', 'or' or the end, found ')'" );
    EXPECT_EQ( refusal( "size=1 size=2" ), "--where: expected 'and', 'or' or the end, found 'size=2'" );
    EXPECT_EQ( refusal( "name='x" ), "--where: unterminated quote at ''x'" );
    EXPECT_EQ( refusal( "size=big" ), "--where: size is a number, not 'big'" );
    EXPECT_EQ( refusal( "handle=0xg" ), "--where: handle is a number, not '0xg'" );
    EXPECT_EQ( refusal( "direct=1" ), "--where: direct is true or false, not '1'" );
    EXPECT_EQ( refusal( "size~=4" ), "--where: ~= needs a text field; size is a number" );
    EXPECT_EQ( refusal( "direct~=4" ), "--where: ~= needs a text field; direct is true or false" );
    for( char const* const condition : { "direct>true", "direct<=no" } )
        EXPECT_EQ( refusal( condition ), "--where: direct is true or false, which takes = and != only" );
    EXPECT_THAT( refusal( "name~=[" ), testing::StartsWith( "can't use --where '[' at offset 1: " ) );
    EXPECT_EQ( refusal( String( 5000, '(' ) ), "--where: too many parentheses and nots" );
}

} // namespace
