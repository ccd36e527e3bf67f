#include "inspect/model/Names.h"

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

TEST( NearestNames, AreFoundInCapitalLettersOrNot ) {
    EXPECT_THAT( nearest( names, "ACL" ), ElementsAre( "pipe.Ingress.acl" ) );
    EXPECT_THAT( nearest( { "IPV4_ACL" }, "ipv4_acl" ), ElementsAre( "IPV4_ACL" ) );
}

TEST( NearestNames, WithTheWordAsAPartComeFirst ) {
    EXPECT_THAT(
        nearest( { "a.mac", "a.acl.entry", "a.b.tenant_acl", "a.acl.ipv4_acl", "a.aclx", "a.black" }, "acl" ),
        ElementsAre( "a.acl.ipv4_acl", "a.acl.entry", "a.b.tenant_acl", "a.aclx", "a.mac" ) );
    EXPECT_THAT( nearest( { "x.b.c.d", "x.b.cc.d" }, "b.c" ), ElementsAre( "x.b.c.d", "x.b.cc.d" ) );
}

String readOf( std::vector<String> const& of, String const& word ) {
    using Bfri::Meaning;
    Meaning const meaning = Bfri::meaningOf( of, word );
    String text = meaning.is == Meaning::Is::found       ? "found"
                  : meaning.is == Meaning::Is::ambiguous ? "ambiguous"
                                                         : "missing of " + std::to_string( meaning.similar );
    for( String const& name : meaning.names )
        text += ' ' + name;
    return text;
}

TEST( AWord, MeansTheExactNameElseTheOnlyOneThatEndsInIt ) {
    std::vector<String> const all = { "a.x", "b.x", "x", "a.x", "e.y", "f.y", "e.y", "g.z" };
    EXPECT_EQ( readOf( all, "x" ), "found x" );
    EXPECT_EQ( readOf( all, "a.x" ), "found a.x" );
    EXPECT_EQ( readOf( all, "z" ), "found g.z" );
    EXPECT_EQ( readOf( all, ".x" ), "ambiguous a.x b.x" );
    EXPECT_EQ( readOf( all, "y" ), "ambiguous e.y f.y" );
    EXPECT_EQ( readOf( all, "nothing" ), "missing of 0" );
}

TEST( AWord, ThatIsMissingComesWithTheNearestNamesAndHowManyAreLikeIt ) {
    EXPECT_EQ( readOf( { "t1", "t2", "t3", "t4", "t5", "t6" }, "t7" ), "missing of 6 t1 t2 t3 t4 t5" );
    EXPECT_EQ( readOf( { "t1", "t2" }, "t7" ), "missing of 2 t1 t2" );
}

} // namespace
