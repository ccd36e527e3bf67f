#include "cli/terminal/TextFormat.h"
#include "cli/terminal/StageText.h"

#include <gmock/gmock.h>
#include <sstream>

namespace {

using namespace Bfri;

RowList const list{
    { { "NAME", {} }, { "SIZE", {} }, { "HANDLE", {} }, { "ON", {} }, { "REFS", {} } },
    { { { "", "a.b" },
        { "", U32{ 5 } },
        { "", Hex( 0x10A ) },
        { "", true },
        { "", List{ Hex( 1 ), Hex( 2 ) } } },
      { { "", "\xC3\xA9\x1B" }, { "", U32{ 1000 } }, { "", {} }, { "", false }, { "", List{} } } } };

String columnsOf( RowList const& rows, TerminalStyle const& look = {} ) {
    std::ostringstream out;
    printColumns( out, rows, look );
    return out.str();
}

TEST( TextColumns, AreAlignedWithNumbersToTheRight ) {
    EXPECT_EQ( columnsOf( list ), "NAME   SIZE  HANDLE      ON   REFS\n"
                                  "a.b       5  0x0000010a  yes  0x00000001 0x00000002\n"
                                  "\xC3\xA9\\x1b  1000  -           no   -\n" );
}

TEST( TextColumns, WithoutRowsAreTheirNames ) {
    EXPECT_EQ( columnsOf( { list.header, {} } ), "NAME  SIZE  HANDLE  ON  REFS\n" );
}

TEST( TextColumns, OfNumbersAreToTheRightAlsoWithoutAny ) {
    EXPECT_EQ( columnsOf( { { { "SIZE", U32{} }, { "N", {} } }, { { { "", {} }, { "", "x" } } } } ),
               "SIZE  N\n"
               "   -  x\n" );
}

TEST( TextColumns, AreCutToTheTerminalWithAMark ) {
    String accents;
    for( int i = 0; i < 45; ++i )
        accents += "\xC3\xA9";
    RowList const rows{ { { "WHAT", {} } }, { { { "", accents } } } };
    EXPECT_EQ( columnsOf( rows, { 45 } ), "WHAT\n" + accents + '\n' );
    EXPECT_EQ( columnsOf( rows, { 44 } ), "WHAT\n" + accents.substr( 4 ) + ">\n" );
    EXPECT_EQ( columnsOf( rows, { 43, false, true } ), "WHAT\n" + accents.substr( 6 ) + "\u2026\n" );
}

RowList const tables{
    { { "HANDLE", {} }, { "SIZE", U32{} }, { "PIPE", {} }, { "NAME", {} }, { "TABLE", {} } },
    { { { "", Hex( 1 ) },
        { "", U32{ 12345 } },
        { "", {} },
        { "", "pipe.Ingress.some.control.acl" },
        { "", "pipe.Ingress.some.t" } },
      { { "", Hex( 2 ) },
        { "", U32{ 1 } },
        { "", "" },
        { "", "n" },
        { "", "pipe.Ingress.other.control.lpm" } } } };

TEST( TextColumns, LoseWhatIsAbsentInEveryRowWhereThereIsNoRoom ) {
    String const wide = columnsOf( tables );
    EXPECT_EQ( columnsOf( tables, { 86 } ), wide ); // just fits
    EXPECT_EQ( columnsOf( tables, { 85 } ),
               "HANDLE       SIZE  NAME                           TABLE\n"
               "0x00000001  12345  pipe.Ingress.some.control.acl  pipe.Ingress.some.t\n"
               "0x00000002      1  n                              pipe.Ingress.other.control.lpm\n" );
    EXPECT_EQ( columnsOf( { tables.header, {} }, { 20 } ), ">  NAME  TABLE\n" );
}

TEST( TextColumns, OfNamesLoseTheirFrontThen ) {
    EXPECT_EQ( columnsOf( tables, { 59 } ), "HANDLE       SIZE  NAME                 TABLE\n"
                                            "0x00000001  12345  <s.some.control.acl  pipe.Ingress.some.t\n"
                                            "0x00000002      1  n                    <.other.control.lpm\n" );
    EXPECT_EQ( columnsOf( tables, { 53, false, true } ),
               "HANDLE       SIZE  NAME              TABLE\n"
               "0x00000001  12345  \u2026ome.control.acl  \u2026.Ingress.some.t\n"
               "0x00000002      1  n                 \u2026her.control.lpm\n" );
}

TEST( TextColumns, BeforeNamesGiveWayToThem ) {
    EXPECT_EQ( columnsOf( tables, { 50 } ), "HANDLE      >  NAME              TABLE\n"
                                            "0x00000001  >  <ome.control.acl  <e.Ingress.some.t\n"
                                            "0x00000002  >  n                 <ther.control.lpm\n" );
    EXPECT_EQ( columnsOf( tables, { 40 } ), ">  NAME               TABLE\n"
                                            ">  <some.control.acl  <pe.Ingress.some.t\n"
                                            ">  n                  <other.control.lpm\n" );
}

TEST( TextColumns, AreBlocksWhereTheyCouldNotBeRead ) {
    EXPECT_EQ( columnsOf( tables, { 39 } ), "HANDLE  0x00000001\n"
                                            "SIZE    12345\n"
                                            "NAME    pipe.Ingress.some.control.acl\n"
                                            "TABLE   pipe.Ingress.some.t\n"
                                            "\n"
                                            "HANDLE  0x00000002\n"
                                            "SIZE    1\n"
                                            "NAME    n\n"
                                            "TABLE   pipe.Ingress.other.control.lpm\n" );
    EXPECT_EQ( columnsOf( tables, { 1 } ), columnsOf( tables, { 39 } ) );
}

TEST( TextColumns, BehindNamesAreCut ) {
    RowList const hashes{
        { { "NAME", {} }, { "FIELDS", {} } },
        { { { "", "a.hash.of.some.length" }, { "", "hdr.ipv4.source hdr.ipv4.destination" } } } };
    EXPECT_EQ( columnsOf( hashes, { 40 } ), "NAME                   FIELDS\n"
                                            "a.hash.of.some.length  hdr.ipv4.source >\n" );
}

TEST( Lines, AreBrokenBetweenWordsWhereTheTerminalEnds ) {
    EXPECT_EQ( inLines( "some words stand here", {} ), "some words stand here\n" );
    EXPECT_EQ( inLines( "some words stand here", { 21 } ), "some words stand here\n" );
    EXPECT_EQ( inLines( "some words stand here", { 20 } ), "some words stand\nhere\n" );
    EXPECT_EQ( inLines( "some words stand here", { 3 } ), "some\nwords\nstand\nhere\n" );
}

TEST( TextFields, TakeALineEachAndOneForEveryRowOfAList ) {
    std::ostringstream out;
    printFields( out, { { "name", "a" },
                        { "empty", "" },
                        { "references", List{ Row{ { "handle", Hex( 1 ) }, { "name", "x" } },
                                              Row{ { "handle", Hex( 2 ) }, { "name", {} } } } } } );
    EXPECT_EQ( out.str(), "name        a\n"
                          "empty       -\n"
                          "references  0x00000001 x\n"
                          "            0x00000002 -\n" );
}

/// Resources of one type that all start in the first stage and go on in the last.
StageMap mapOf( BfResource const& resource, std::vector<Stage> const& stages, U32 resources ) {
    std::vector<StageLoad> loads( stages.size() );
    loads.front() = { resources, resources };
    loads.back() = { 0, resources };
    std::vector<Placed> const placed( resources, { &resource, { { stages.front() }, { stages.back() } } } );
    return { {}, stages, loads, { { resource.ingress, resource.type, placed, loads } }, {} };
}

String gridOf( StageMap const& map, TerminalStyle const& look = {} ) {
    std::ostringstream out;
    printGrid( out, look, map );
    return out.str();
}

TEST( StageGrid, IsOnlyAsWideAsALongNumberWhereThatStands ) {
    BfResource const resource;
    EXPECT_EQ( gridOf( mapOf( resource, { 0, 3, 1000000 }, 12 ) ),
               "STAGE            ALL    0    3  1000000\n"
               "egress\n"
               "  phase_0_match   12   12    .      +12\n"
               "all               12   12    .      +12\n"
               "                        @             @\n" );
}

TEST( StageGrid, LeavesTheNumberOfAllToItsColumn ) {
    BfResource const resource;
    auto map = mapOf( resource, { 0, 1 }, 1 );
    map.groups.front().resources.assign( 123456, map.groups.front().resources.front() );
    EXPECT_THAT( gridOf( map ), testing::StartsWith( "STAGE               ALL    0    1\n" ) );
}

TEST( StageGrid, HasItsBlocksWhereTheTerminalIsTooNarrowForALongNumber ) {
    BfResource const resource;
    auto const map = mapOf( resource, { 0, 1, 1000000, 2000000 }, 1 );
    String const text = gridOf( map, { 35 } );
    EXPECT_THAT( text, testing::StartsWith( "STAGE            ALL    0    1\n" ) );
    EXPECT_THAT( text, testing::HasSubstr( "\n\nSTAGE            1000000  2000000\n" ) );
}

TEST( StageGrid, CutsTheTypesWhereNoStageHadRoom ) {
    BfResource const resource;
    EXPECT_THAT( gridOf( mapOf( resource, { 0, 1 }, 1 ), { 16 } ),
                 testing::StartsWith( "STAGE        ALL\negress\n  phase_0_>    1\n" ) );
    EXPECT_THAT( gridOf( mapOf( resource, { 0, 1 }, 1 ), { 5 } ),
                 testing::StartsWith( "STAGE     ALL\negress\n  phase>    1\n" ) ); // the line is broken
}

TEST( StageBars, AreOnlyAsWideAsALongNumberWhereThatStands ) {
    BfResource resource;
    resource.name = "a.long.name";
    std::ostringstream out;
    printBars( out, {}, mapOf( resource, { 0, 3, 1000000 }, 1 ), {} );
    EXPECT_EQ( out.str(), "SIZE    0  3 1000000  NAME\n"
                          "egress phase_0_match: 1\n"
                          "   0  ###  .########  a.long.name\n" );
}

TEST( StageBars, LeaveNamesWholeWhereLittleOfThemWouldStay ) {
    BfResource resource;
    resource.name = "a.long.name";
    auto const bars = [ & ]( std::size_t columns ) {
        std::ostringstream out;
        printBars( out, { columns }, mapOf( resource, { 0, 1 }, 1 ), {} );
        return out.str();
    };
    EXPECT_THAT( bars( 18 ), testing::EndsWith( "  <ng.name\n" ) );
    EXPECT_THAT( bars( 17 ), testing::EndsWith( "  a.long.name\n" ) );
}

} // namespace
