#include "inspect/model/Names.h"

#include "cli/Failure.h"

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

String refusalOf( std::vector<String> const& of, String const& word ) {
    try {
        return "found " + Bfri::meantName( of, word, { "name", "records", "names" } );
    } catch( Bfri::Failure const& failure ) {
        return failure.what() + String( " " ) + std::to_string( failure.suggestions.size() );
    }
}

TEST( AMissingName, SaysThatThereAreMoreLikeItThanShown ) {
    EXPECT_EQ( refusalOf( { "t1", "t2", "t3", "t4", "t5", "t6" }, "t7" ),
               "no name 't7'; the nearest of 6 names like it: 5" );
    EXPECT_EQ( refusalOf( { "t1", "t2" }, "t7" ), "no name 't7'; names like it: 2" );
}

TEST( AName, IsAlsoWhatATerminalShowsOfIt ) {
    std::vector<String> const odd = { "pipe.ipv4_\xe4\x63l", "pipe.b\x1b", "c.b\x1b" };
    EXPECT_EQ( refusalOf( odd, "pipe.ipv4_\\xe4cl" ), "found pipe.ipv4_\xe4\x63l" );
    EXPECT_EQ( refusalOf( odd, "ipv4_\\xe4cl" ), "found pipe.ipv4_\xe4\x63l" );
    EXPECT_EQ( refusalOf( odd, "b\\x1b" ), "'b\\x1b' is the end of several records' names: 2" );
}

TEST( NamesMeant, AreTheExactOneElseThoseThatEndInTheWordElseThoseThatShowSo ) {
    std::vector<String> const all = { "a.x", "b.x", "x", "a.x", "c.\x1b", "d.\n", "e.y", "f.y", "e.y" };
    struct {
        char const* word;
        std::vector<String> meant;
    } const rows[] = { { "x", { "x" } },
                       { "a.x", { "a.x" } },
                       { ".x", { "a.x", "b.x" } },
                       { "y", { "e.y", "f.y" } },
                       { "c.\\x1b", { "c.\x1b" } },
                       { "\\x0a", { "d.\n" } },
                       { "z", {} },
                       { "", {} } };
    for( auto const& row : rows )
        EXPECT_EQ( Bfri::namesMeant( all, row.word ), row.meant ) << row.word;
}

} // namespace
