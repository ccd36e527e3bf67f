#include "tests/support/ContextBuilder.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace {

using Support::ContextBuilder;
using Support::JsonTree;
using testing::ElementsAre;

TEST( JsonTree, KeepsTheTextOfItsScalars ) {
    EXPECT_EQ( JsonTree( R"( { "a" : [ 1.50 , -0, "x\"]" ], "b": {}, "c": [ ] } )" ).text(),
               R"({"a":[1.50,-0,"x\"]"],"b":{},"c":[]})" );
}

TEST( JsonTree, RefusesWhatIsNoJson ) {
    for( char const* text : { "", "{", "[1,]", "{\"a\" 1}", "{1:2}", "\"a", "1 2", "[1}" } )
        EXPECT_THROW( JsonTree{ text }, std::invalid_argument ) << text;
}

TEST( JsonTree, ReplacesAddsAppendsAndRemoves ) {
    JsonTree tree( R"({ "a": [ 1, 2 ] })" );
    tree.with( "/a/0", "null" ).with( "/b", "{}" ).with( "/b/c", "3" ).with( "/a/-", "4" ).without( "/a/1" );
    EXPECT_EQ( tree.text(), R"({"a":[null,4],"b":{"c":3}})" );
}

TEST( JsonTree, RefusesPlacesThatDoNotExist ) {
    JsonTree tree( R"({ "a": [ 1 ] })" );
    EXPECT_THROW( tree.without( "/b" ), std::out_of_range );
    EXPECT_THROW( tree.with( "/b/c", "1" ), std::out_of_range );
    EXPECT_THROW( tree.with( "/a/1", "1" ), std::out_of_range );
    EXPECT_THROW( tree.with( "/a/0/x", "1" ), std::out_of_range );
}

TEST( JsonTree, PutsAMemberInFrontOfTheOthersAndItsNamesake ) {
    JsonTree tree( R"({ "a": { "b": 1, "c": 2 } })" );
    EXPECT_EQ( tree.withFirst( "/a/c", "3" ).text(), R"({"a":{"c":3,"b":1,"c":2}})" );
    EXPECT_EQ( tree.withFirst( "/d", "[]" ).text(), R"({"d":[],"a":{"c":3,"b":1,"c":2}})" );
    EXPECT_THROW( tree.withFirst( "/d/0", "1" ), std::out_of_range );
}

TEST( JsonTree, ListsEveryPlace ) {
    EXPECT_THAT( JsonTree( R"({ "a": [ 1, { "b": 2 } ] })" ).pointers(),
                 ElementsAre( "/a", "/a/0", "/a/1", "/a/1/b" ) );
}

TEST( JsonTree, EscapesTexts ) {
    EXPECT_EQ( JsonTree::string( std::string_view( "a\"\\\n\0b", 6 ) ).text(), R"("a\"\\\u000a\u0000b")" );
}

TEST( ContextBuilder, MakesWhatTheTestNamesAndNothingElse ) {
    auto const context = ContextBuilder().table( Support::matchTable( "acl" ).size( 512 ).idleTime( 3 ) );
    EXPECT_EQ( context.tree().at( "/tables/0/size" ).text(), "512" );
    EXPECT_EQ( context.tree().at( "/tables/0/match_attributes/stage_tables/0/idletime_stage_table" ).text(),
               R"({"precision":3})" );
    EXPECT_FALSE( context.tree().has( "/flexible_headers" ) );
}

TEST( ContextBuilder, GivesEachNameItsHandleBelowThePipeBits ) {
    EXPECT_NE( Support::handleOf( "acl" ), Support::handleOf( "acl2" ) );
    EXPECT_LT( Support::handleOf( "acl" ), 1U << 28 );
}

} // namespace
