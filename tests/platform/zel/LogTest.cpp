#include "zel/Log.h"

#include <gtest/gtest.h>

namespace {

using Zel::LogHandle;

LogHandle message( char const* name, char const* format ) {
    return { .name = name,
             .severity = 4,
             .format = format,
             .explanation = "Why.",
             .recommendedAction = "Do.",
             .seconds = 60,
             .rate = 1.5,
             .burst = 2,
             .flags = 3 };
}

TEST( LogHandle, IsFoundByItsNameWithAllItHas ) {
    LogHandle const& registered = Zel::logHandleIs( message( "LOG_TEST_FOUND", "%s: %s." ) );
    LogHandle const* const found = Zel::logHandle( "LOG_TEST_FOUND" );
    ASSERT_EQ( found, &registered );
    EXPECT_EQ( found->name, "LOG_TEST_FOUND" );
    EXPECT_EQ( found->severity, 4U );
    EXPECT_EQ( found->format, "%s: %s." );
    EXPECT_EQ( found->explanation, "Why." );
    EXPECT_EQ( found->recommendedAction, "Do." );
    EXPECT_EQ( found->seconds, 60U );
    EXPECT_EQ( found->rate, 1.5 );
    EXPECT_EQ( found->burst, 2U );
    EXPECT_EQ( found->flags, 3U );
}

TEST( LogHandle, IsNullForOtherNames ) {
    Zel::logHandleIs( message( "LOG_TEST_NAME", "" ) );
    for( char const* const name : { "", "LOG_TEST", "LOG_TEST_NAME_", "log_test_name" } )
        EXPECT_EQ( Zel::logHandle( name ), nullptr ) << name;
}

TEST( LogHandle, ANameRegisteredAgainFindsTheNewOneAndLeavesTheFormerAsItWas ) {
    LogHandle const& former = Zel::logHandleIs( message( "LOG_TEST_AGAIN", "former" ) );
    LogHandle const& later = Zel::logHandleIs( message( "LOG_TEST_AGAIN", "later" ) );
    EXPECT_EQ( Zel::logHandle( "LOG_TEST_AGAIN" ), &later );
    EXPECT_EQ( later.format, "later" );
    EXPECT_EQ( former.format, "former" );
}

} // namespace
