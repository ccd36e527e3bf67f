#include "zel/Assert.h"

#include <csignal>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#define ZEL_SOURCE "AssertTest"

namespace {

using Zel::AssertionError;
using Zel::AssertionFailure;
using Zel::String;
using Zel::U32;

class Place : public Zel::InputScope {
  public:
    explicit Place( char const* text ) : text_( text ) {}
    void locate( Zel::InputPlace& place ) const override { place.file = text_; }

  private:
    char const* text_;
};

class Table : public Zel::InputScope {
    void locate( Zel::InputPlace& place ) const override { place.element = { "table", 3, "acl" }; }
};

class ThrowingAssert : public testing::Test {
  protected:
    ThrowingAssert() { Zel::assertionHandlerIs( Zel::throwAssertionError ); }
    ~ThrowingAssert() override { Zel::assertionHandlerIs( nullptr ); }
};

/// The report of a function's broken condition.
template<class Function>
AssertionFailure failureOf( Function function ) {
    try {
        function();
    } catch( AssertionError const& error ) {
        return error.failure();
    }
    ADD_FAILURE() << "nothing failed";
    return {};
}

U32 requirePositive( int number ) {
    ZEL_ASSERT( number > 0 ) << "number is " << number;
    return __LINE__ - 1;
}

TEST_F( ThrowingAssert, AKeptConditionDoesNothing ) { EXPECT_GT( requirePositive( 1 ), 0U ); }

TEST_F( ThrowingAssert, ABrokenConditionSaysWhereAndWhat ) {
    auto const failure = failureOf( [] { requirePositive( -3 ); } );
    EXPECT_EQ( failure.source, "AssertTest" );
    EXPECT_EQ( failure.line, requirePositive( 1 ) );
    EXPECT_THAT( failure.function, testing::HasSubstr( "requirePositive(int)" ) );
    EXPECT_EQ( failure.condition, "number > 0" );
    EXPECT_EQ( failure.message, "number is -3" );
    EXPECT_EQ( failure.position, "" );
}

TEST_F( ThrowingAssert, TheConditionStandsAsWritten ) {
    int const values[] = { 1, 2 };
    auto const pair = []( int a, int b ) { return std::make_pair( a, b ); };
    EXPECT_EQ( failureOf( [ & ] { ZEL_ASSERT( values[ 0 ] == 3 ); } ).condition, "values[ 0 ] == 3" );
    EXPECT_EQ( failureOf( [ & ] { ZEL_ASSERT( pair( 1, 2 ).first == 2 ); } ).condition,
               "pair( 1, 2 ).first == 2" );
    EXPECT_EQ( failureOf( [ & ] { ZEL_ASSERT( std::is_same_v<int, U32> ); } ).condition,
               "std::is_same_v<int, U32>" );
    EXPECT_EQ( failureOf( [ & ] { ZEL_ASSERT( false ); } ).message, "" );
    String const member = "a";
    EXPECT_EQ( failureOf( [ & ] { ZEL_ASSERT( member == "b" ); } ).condition, "member == \"b\"" );
}

TEST_F( ThrowingAssert, AConditionIsEvaluatedOnceAndAMessageOnlyWhenItIsNeeded ) {
    int conditions = 0;
    int messages = 0;
    ZEL_ASSERT( ++conditions == 1 ) << ++messages;
    EXPECT_EQ( conditions, 1 );
    EXPECT_EQ( messages, 0 );
    failureOf( [ & ] { ZEL_ASSERT( ++conditions == 0 ) << ++messages; } );
    EXPECT_EQ( conditions, 2 );
    EXPECT_EQ( messages, 1 );
}

TEST_F( ThrowingAssert, IsAStatementOfItsOwnInABranch ) {
    bool const right = true;
    if( right )
        ZEL_ASSERT( right );
    else
        ZEL_ASSERT( !right ) << "never";
}

TEST_F( ThrowingAssert, GivenTextsAreCarried ) {
    auto const failure = failureOf( [] {
        Zel::AssertionSite{ "Parser", 283, "void parse()", "\"n > 0\" == nullptr" }.fail( "n is 0" );
    } );
    EXPECT_EQ( failure.source, "Parser" );
    EXPECT_EQ( failure.line, 283U );
    EXPECT_EQ( failure.function, "void parse()" );
    EXPECT_EQ( failure.condition, "\"n > 0\" == nullptr" );
    EXPECT_EQ( failure.message, "n is 0" );
}

TEST_F( ThrowingAssert, TheOperationOfTheThreadIsNamed ) {
    auto const function = [] { return failureOf( [] { requirePositive( 0 ); } ).function; };
    Zel::Operation const outer( "void parse()" );
    EXPECT_EQ( function(), "void parse()" );
    {
        Zel::Operation const inner( "int parseTable()" );
        EXPECT_EQ( function(), "int parseTable()" );
        String other;
        std::thread( [ & ] { other = function(); } ).join();
        EXPECT_THAT( other, testing::HasSubstr( "requirePositive(int)" ) );
    }
    EXPECT_EQ( function(), "void parse()" );
}

TEST_F( ThrowingAssert, AnOperationEndsWithAnException ) {
    failureOf( [] {
        Zel::Operation const operation( "void parse()" );
        requirePositive( 0 );
    } );
    EXPECT_THAT( failureOf( [] { requirePositive( 0 ); } ).function,
                 testing::HasSubstr( "requirePositive(int)" ) );
}

TEST_F( ThrowingAssert, WhatIsExpectedIsCarried ) {
    auto const failure = failureOf( [] {
        Zel::AssertionSite{ "Parser", 7, "void f()", "IsArray()", "an array" }.fail();
    } );
    EXPECT_EQ( failure.expected, "an array" );
    EXPECT_EQ( Zel::toText( failure ), "Parser:7: void f(): assertion failed: IsArray()\n" );
    EXPECT_EQ( failureOf( [] { requirePositive( -3 ); } ).expected, "" );
}

TEST_F( ThrowingAssert, TheErrorSaysConditionAndPlaceInOneLine ) {
    AssertionError const placeless( { "Parser", 7, "void f()", "a > b", "message", "" } );
    EXPECT_STREQ( placeless.what(), "Parser:7: void f(): assertion failed: a > b" );
    AssertionError const error( { "Parser", 7, "void f()", "a > b", "message", "place" } );
    EXPECT_STREQ( error.what(), "Parser:7: void f(): assertion failed: a > b, in place" );
    AssertionError const copy( error );
    EXPECT_STREQ( copy.what(), error.what() );
    EXPECT_EQ( copy.failure().message, "message" );
    EXPECT_NO_THROW( static_cast<void>( dynamic_cast<std::exception const&>( copy ) ) );
}

TEST( AssertionText, HasALineForEachThingThatIsKnown ) {
    struct {
        AssertionFailure failure;
        char const* text;
    } const rows[] = {
        { { "S", 1, "f()", "c", "", "" }, "S:1: f(): assertion failed: c\n" },
        { { "S", 1, "f()", "c", "m", "" }, "S:1: f(): assertion failed: c\nm\n" },
        { { "S", 1, "f()", "c", "", "p" }, "S:1: f(): assertion failed: c\nin p\n" },
        { { "S", 1, "f()", "c", "m", "p, q" }, "S:1: f(): assertion failed: c\nm\nin p, q\n" },
    };
    for( auto const& row : rows )
        EXPECT_EQ( Zel::toText( row.failure ), row.text );
}

TEST( AssertionHandler, IsReturnedWhenReplaced ) {
    EXPECT_EQ( Zel::assertionHandlerIs( Zel::throwAssertionError ), nullptr );
    EXPECT_EQ( Zel::assertionHandlerIs( nullptr ), &Zel::throwAssertionError );
    EXPECT_EQ( Zel::assertionHandlerIs( nullptr ), nullptr );
}

TEST_F( ThrowingAssert, FailuresOfManyThreadsStayApart ) {
    std::vector<std::thread> threads;
    std::vector<AssertionFailure> failures( 4 );
    for( int i = 0; i < 4; ++i )
        threads.emplace_back( [ &failures, i ] {
            String const text = "thread " + std::to_string( i );
            Place const place( text.c_str() );
            failures[ static_cast<std::size_t>( i ) ] = failureOf( [ i ] { requirePositive( -i ); } );
        } );
    for( std::thread& thread : threads )
        thread.join();
    for( int i = 0; i < 4; ++i ) {
        EXPECT_EQ( failures[ static_cast<std::size_t>( i ) ].message, "number is " + std::to_string( -i ) );
        EXPECT_EQ( failures[ static_cast<std::size_t>( i ) ].position, "thread " + std::to_string( i ) );
    }
}

TEST_F( ThrowingAssert, WhatOfAPlaceWithLineEndsIsOneLine ) {
    Place const place( "a\nb" );
    try {
        requirePositive( 0 );
        ADD_FAILURE() << "nothing failed";
    } catch( AssertionError const& error ) {
        EXPECT_THAT( error.what(), testing::EndsWith( ": assertion failed: number > 0, in a\\x0ab" ) );
    }
}

class AssertDeathTest : public testing::Test {
  protected:
    AssertDeathTest() { GTEST_FLAG_SET( death_test_style, "threadsafe" ); }
};

TEST_F( AssertDeathTest, WithoutAHandlerTheProcessSaysItAllAndAborts ) {
    Place const file( "file \"a.json\"" );
    Table const table;
    Zel::AssertionSite const site{ "Parser", 7, "void f()", "a > b" };
    EXPECT_EXIT( site.fail( "a is 100%" ), testing::KilledBySignal( SIGABRT ),
                 testing::Eq( "Parser:7: void f(): assertion failed: a > b\n"
                              "a is 100%\n"
                              "in file \"a.json\", table 3 \"acl\"\n" ) );
    EXPECT_EXIT( requirePositive( 0 ), testing::KilledBySignal( SIGABRT ),
                 testing::ContainsRegex( "^AssertTest:[0-9]+: .*requirePositive\\(int\\): assertion failed: "
                                         "number > 0\nnumber is 0\n"
                                         "in file \"a.json\", table 3 \"acl\"\n$" ) );
}

TEST_F( AssertDeathTest, AHandlerThatReturnsDoesNotSaveTheProcess ) {
    auto const report = [] {
        Zel::assertionHandlerIs( []( AssertionFailure const& failure ) {
            std::fprintf( stderr, "handler saw %s\n", failure.condition.c_str() );
        } );
        Zel::AssertionSite{ "Parser", 7, "void f()", "a > b" }.fail();
    };
    EXPECT_EXIT( report(), testing::KilledBySignal( SIGABRT ),
                 testing::Eq( "handler saw a > b\nParser:7: void f(): assertion failed: a > b\n" ) );
}

} // namespace
