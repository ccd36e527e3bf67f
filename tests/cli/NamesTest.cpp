#include "cli/Names.h"

#include <gmock/gmock.h>

namespace {

using Bfri::namesEndingIn;
using Bfri::nearest;
using testing::ElementsAre;
using testing::IsEmpty;
using Vessa::String;

std::vector<String> const names = { "pipe.Ingress.ipv4_lpm", "pipe.Egress.ipv4_lpm", "pipe.Ingress.acl",
                                    "pipe.Ingress.ipv4_host", "port" };

TEST( NameSuffix, BeginsAtADotOrRightBehindOne ) {
    EXPECT_THAT( namesEndingIn( names, "acl" ), ElementsAre( "pipe.Ingress.acl" ) );
    EXPECT_THAT( namesEndingIn( names, ".acl" ), ElementsAre( "pipe.Ingress.acl" ) );
    EXPECT_THAT( namesEndingIn( names, "Ingress.acl" ), ElementsAre( "pipe.Ingress.acl" ) );
    EXPECT_THAT( namesEndingIn( names, "cl" ), IsEmpty() );
    EXPECT_THAT( namesEndingIn( names, "gress.acl" ), IsEmpty() );
    EXPECT_THAT( namesEndingIn( names, "ort" ), IsEmpty() );
}

TEST( NameSuffix, IsNeitherEmptyNorTheWholeNameNorLonger ) {
    EXPECT_THAT( namesEndingIn( names, "" ), IsEmpty() );
    EXPECT_THAT( namesEndingIn( names, "port" ), IsEmpty() );
    EXPECT_THAT( namesEndingIn( { ".port" }, ".port" ), IsEmpty() );
    EXPECT_THAT( namesEndingIn( names, "a.port" ), IsEmpty() );
    EXPECT_THAT( namesEndingIn( { "a.", "b" }, "" ), IsEmpty() );
}

TEST( NameSuffix, OfSeveralNamesGivesEachOnceInByteOrder ) {
    EXPECT_THAT( namesEndingIn( names, "ipv4_lpm" ),
                 ElementsAre( "pipe.Egress.ipv4_lpm", "pipe.Ingress.ipv4_lpm" ) );
    EXPECT_THAT( namesEndingIn( { "a.b", "a.b" }, "b" ), ElementsAre( "a.b" ) );
}

TEST( NearestNames, AreCloseAsAWholeOrBehindTheLastDot ) {
    EXPECT_THAT( nearest( names, "prot" ), ElementsAre( "port" ) );
    EXPECT_THAT( nearest( names, "ack" ), ElementsAre( "pipe.Ingress.acl" ) );
    EXPECT_THAT( nearest( names, "pipe.Ingres.acl" ), ElementsAre( "pipe.Ingress.acl" ) );
    EXPECT_THAT( nearest( names, "zzzz" ), IsEmpty() );
}

TEST( NearestNames, ComeNearestFirstThenInByteOrder ) {
    EXPECT_THAT( nearest( { "axx", "ab", "abc", "aab" }, "abc" ), ElementsAre( "abc", "ab", "aab", "axx" ) );
}

TEST( NearestNames, IncludeThoseThatHoldTheWord ) {
    EXPECT_THAT( nearest( names, "Egress" ), ElementsAre( "pipe.Egress.ipv4_lpm" ) );
    EXPECT_THAT( nearest( names, "" ), IsEmpty() );
}

TEST( NearestNames, AreAtMostFive ) {
    EXPECT_THAT( nearest( { "t1", "t2", "t3", "t4", "t5", "t6" }, "t7" ),
                 ElementsAre( "t1", "t2", "t3", "t4", "t5" ) );
}

} // namespace
