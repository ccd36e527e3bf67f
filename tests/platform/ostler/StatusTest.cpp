#include "ostler/Ostler.h"

#include <gtest/gtest.h>

namespace {

TEST( Status, IsOkWithoutAReason ) {
    EXPECT_TRUE( Ostler::Status().ok() );
    EXPECT_EQ( Ostler::Status().text(), "" );
    EXPECT_FALSE( ( Ostler::Status{ "x", "" } ).ok() );
}

TEST( Status, NamesThePlaceWhenThereIsOne ) {
    EXPECT_EQ( ( Ostler::Status{ "no such thing", "a/switch.conf" } ).text(),
               "a/switch.conf: no such thing" );
    EXPECT_EQ( ( Ostler::Status{ "expected that", "switch.conf", 3, 14 } ).text(),
               "switch.conf:3:14: expected that" );
}

TEST( SdkContext, IsOneInTheProcessAndWithoutDevicesAtStart ) {
    ASSERT_NE( Ostler::sdkContext(), nullptr );
    EXPECT_EQ( Ostler::sdkContext(), Ostler::sdkContext() );
    EXPECT_EQ( Ostler::sdkContext()->profile.numDevices, 0 );
    EXPECT_TRUE( Ostler::sdkContext()->profile.devices.empty() );
    EXPECT_TRUE( Ostler::sdkContext()->status.ok() );
}

} // namespace
