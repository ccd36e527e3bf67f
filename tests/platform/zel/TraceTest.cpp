#include "zel/Trace.h"

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Zel::String;
using Zel::TraceHandle;
using Zel::TraceLine;
using Zel::U32;

/// The levels of a handle that are on, as digits.
String levelsOn( TraceHandle const& handle ) {
    String digits;
    for( U32 level = 0; level < 20; ++level )
        if( handle.levelOn( level ) )
            digits += std::to_string( level );
    return digits;
}

TEST( TraceHandle, HasLevelZeroOnAtStart ) {
    TraceHandle const& handle = TraceHandle::byName( "TraceTestStart" );
    EXPECT_EQ( handle.name(), "TraceTestStart" );
    EXPECT_EQ( levelsOn( handle ), "0" );
    EXPECT_FALSE( handle.levelOn( 0xFFFFFFFF ) );
}

TEST( TraceHandle, IsOneAName ) {
    TraceHandle& handle = TraceHandle::byName( "TraceTestOne" );
    EXPECT_EQ( &handle, &TraceHandle::byName( "TraceTestOne" ) );
    EXPECT_NE( &handle, &TraceHandle::byName( "TraceTestOther" ) );
    handle.levelIs( 3, true );
    EXPECT_EQ( levelsOn( TraceHandle::byName( "TraceTestOther" ) ), "0" );
}

TEST( TraceHandle, SwitchesEachLevelByItself ) {
    TraceHandle handle( "TraceTestSwitch" );
    handle.levelIs( 9, true );
    handle.levelIs( 5, true );
    EXPECT_EQ( levelsOn( handle ), "059" );
    handle.levelIs( 0, false );
    handle.levelIs( 5, false );
    handle.levelIs( 6, false );
    EXPECT_EQ( levelsOn( handle ), "9" );
    for( U32 const level : { 10U, 16U, 31U, 32U, 0xFFFFFFFFU } ) {
        handle.levelIs( level, true );
        EXPECT_EQ( levelsOn( handle ), "9" ) << level;
        handle.levelIs( level, false );
        EXPECT_EQ( levelsOn( handle ), "9" ) << level;
    }
}

String complaint( String const& item ) {
    return "ZEL_TRACE: expected NAME/LEVEL or NAME/FIRST-LAST with levels 0 to 9, got \"" + item + "\"\n";
}

struct EnvironmentRow {
    char const* variable;
    char const* levels; ///< that are on in a handle named A
    String said;
};

EnvironmentRow const environmentRows[] = {
    // Which lines are selected.
    { "", "0", "" },
    { "A/5", "05", "" },
    { "A/5-7", "0567", "" },
    { "A/0-9", "0123456789", "" },
    { "A/9-9", "09", "" },
    { "A/5,A/7", "057", "" },
    { "B/1,A/5-6,C/9", "056", "" },
    { "A/5,", "05", "" },
    // Other names.
    { "B/5", "0", "" },
    { "a/5", "0", "" },
    { "AA/5", "0", "" },
    { "A/A/5", "0", "" },
    { " A/5", "0", "" },
    // Unreadable parts are reported and skipped.
    { "A", "0", complaint( "A" ) },
    { "A/", "0", complaint( "A/" ) },
    { "/5", "0", complaint( "/5" ) },
    { "/", "0", complaint( "/" ) },
    { ",", "0", complaint( "" ) },
    { "A/10", "0", complaint( "A/10" ) },
    { "A/x", "0", complaint( "A/x" ) },
    { "A/-5", "0", complaint( "A/-5" ) },
    { "A/5-", "0", complaint( "A/5-" ) },
    { "A/7-5", "0", complaint( "A/7-5" ) },
    { "A/5-6-7", "0", complaint( "A/5-6-7" ) },
    { "A/5 ", "0", complaint( "A/5 " ) },
    { "A/1-10", "0", complaint( "A/1-10" ) },
    { "B/x,A/5,C", "05", complaint( "B/x" ) + complaint( "C" ) },
};

class TraceEnvironment : public testing::Test {
  protected:
    void TearDown() override { unsetenv( "ZEL_TRACE" ); }
};

TEST_F( TraceEnvironment, TurnsTheSelectedLevelsOn ) {
    for( EnvironmentRow const& row : environmentRows ) {
        SCOPED_TRACE( row.variable );
        setenv( "ZEL_TRACE", row.variable, 1 );
        testing::internal::CaptureStderr();
        TraceHandle const handle( "A" );
        EXPECT_EQ( testing::internal::GetCapturedStderr(), row.said );
        EXPECT_EQ( levelsOn( handle ), row.levels );
    }
}

TEST_F( TraceEnvironment, IsReadWhenANameIsFirstUsed ) {
    setenv( "ZEL_TRACE", "TraceTestFirst/5", 1 );
    EXPECT_EQ( levelsOn( TraceHandle::byName( "TraceTestFirst" ) ), "05" );
    setenv( "ZEL_TRACE", "TraceTestFirst/6", 1 );
    EXPECT_EQ( levelsOn( TraceHandle::byName( "TraceTestFirst" ) ), "05" );
}

/// Collects the lines of a test in place of standard error.
class Trace : public testing::Test {
  protected:
    Trace() {
        former_ = Zel::traceSinkIs( [ this ]( TraceLine const& line ) { lines_.push_back( line ); } );
    }
    ~Trace() override { Zel::traceSinkIs( std::move( former_ ) ); }

    TraceHandle handle_{ "TraceTest" };
    std::vector<TraceLine> lines_;
    Zel::TraceSink former_;
};

TEST_F( Trace, LinesCarryTheirPlaceAndText ) {
    handle_.levelIs( 7, true );
    ZEL_TRACE( handle_, 7 ) << "Parsed table " << 3;
    U32 const line = __LINE__ - 1;
    ASSERT_EQ( lines_.size(), 1U );
    EXPECT_EQ( lines_[ 0 ].source, "TraceTest" );
    EXPECT_EQ( lines_[ 0 ].level, 7U );
    EXPECT_EQ( lines_[ 0 ].line, line );
    EXPECT_EQ( lines_[ 0 ].function, "TestBody" );
    EXPECT_EQ( lines_[ 0 ].text, "Parsed table 3" );
}

TEST_F( Trace, AGivenPlaceIsCarried ) {
    ZEL_TRACE_AT( handle_, 0, 391, "doPrepareToDie" ) << "void f()";
    ASSERT_EQ( lines_.size(), 1U );
    EXPECT_EQ( lines_[ 0 ].line, 391U );
    EXPECT_EQ( lines_[ 0 ].function, "doPrepareToDie" );
    EXPECT_EQ( lines_[ 0 ].text, "void f()" );
}

TEST_F( Trace, TheTextIsBuiltOnlyWhenTheLevelIsOn ) {
    int built = 0;
    auto const text = [ &built ] { return ++built; };
    ZEL_TRACE( handle_, 5 ) << text();
    EXPECT_EQ( built, 0 );
    EXPECT_TRUE( lines_.empty() );
    handle_.levelIs( 5, true );
    ZEL_TRACE( handle_, 5 ) << text();
    EXPECT_EQ( built, 1 );
    EXPECT_EQ( lines_.size(), 1U );
    ZEL_TRACE( handle_, 10 ) << text();
    EXPECT_EQ( built, 1 );
}

// The macro can be used wherever a statement can.
TEST_F( Trace, IsAStatementOfItsOwnInABranch ) {
    for( bool const yes : { true, false } )
        if( yes )
            ZEL_TRACE( handle_, 0 ) << "yes";
        else
            ZEL_TRACE( handle_, 0 ) << "no";
    if( lines_.size() == 2 )
        ZEL_TRACE( handle_, 0 ) << "both";
    ASSERT_EQ( lines_.size(), 3U );
    EXPECT_EQ( lines_[ 0 ].text + lines_[ 1 ].text + lines_[ 2 ].text, "yesnoboth" );
}

TEST_F( Trace, ASinkReturnsItsForerunner ) {
    int others = 0;
    auto const former = Zel::traceSinkIs( [ &others ]( TraceLine const& ) { ++others; } );
    ZEL_TRACE( handle_, 0 ) << "other";
    EXPECT_EQ( others, 1 );
    EXPECT_TRUE( lines_.empty() );
    ASSERT_TRUE( former );
    former( {} );
    EXPECT_EQ( lines_.size(), 1U );
}

TEST_F( Trace, LinesOfManyThreadsArriveWhole ) {
    constexpr std::size_t rounds = 500;
    std::vector<std::thread> threads;
    for( int i = 0; i < 4; ++i )
        threads.emplace_back( [ this ] {
            for( std::size_t round = 0; round < rounds; ++round )
                ZEL_TRACE( handle_, 0 ) << "line " << round;
        } );
    for( std::thread& thread : threads )
        thread.join();
    ASSERT_EQ( lines_.size(), 4 * rounds );
    for( TraceLine const& line : lines_ )
        EXPECT_EQ( line.text.substr( 0, 5 ), "line " );
}

TEST_F( Trace, WithoutASinkLinesGoToStandardError ) {
    auto sink = Zel::traceSinkIs( nullptr );
    testing::internal::CaptureStderr();
    ZEL_TRACE_AT( handle_, 0, 100, "handleInitialized" ) << "100% of "
                                                         << "it";
    handle_.levelIs( 9, true );
    ZEL_TRACE_AT( handle_, 9, 0, "f" );
    EXPECT_EQ( testing::internal::GetCapturedStderr(),
               "TraceTest/0 100 handleInitialized: 100% of it\nTraceTest/9 0 f: \n" );
    Zel::traceSinkIs( std::move( sink ) );
    EXPECT_TRUE( lines_.empty() );
}

} // namespace
