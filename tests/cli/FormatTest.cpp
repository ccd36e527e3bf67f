#include "cli/CsvFormat.h"
#include "cli/JsonFormat.h"
#include "cli/TextFormat.h"

#include <gtest/gtest.h>
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

String columnsOf( RowList const& rows, Look const& look = {} ) {
    std::ostringstream out;
    printColumns( out, rows, look );
    return out.str();
}

String printed( void ( *print )( std::ostream&, RowList const& ), RowList const& rows ) {
    std::ostringstream out;
    print( out, rows );
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
    RowList const rows{ { { "NAME", {} } }, { { { "", "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9" } } } };
    EXPECT_EQ( columnsOf( rows, { 5 } ), "NAME\n\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\n" );
    EXPECT_EQ( columnsOf( rows, { 4 } ), "NAME\n\xC3\xA9\xC3\xA9\xC3\xA9>\n" );
    EXPECT_EQ( columnsOf( rows, { 3, false, true } ), "NA\u2026\n\xC3\xA9\xC3\xA9\u2026\n" );
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

TEST( Csv, HasAHeaderAndPlainNumbers ) {
    EXPECT_EQ( printed( printCsv, list ), "NAME,SIZE,HANDLE,ON,REFS\n"
                                          "a.b,5,266,true,1 2\n"
                                          "\xC3\xA9\x1B,1000,,false,\n" );
    EXPECT_EQ( printed( printCsv, { list.header, {} } ), "NAME,SIZE,HANDLE,ON,REFS\n" );
}

TEST( Csv, QuotesFieldsThatNeedIt ) {
    struct {
        char const* text;
        char const* csv;
    } const rows[] = { { "plain text", "plain text" }, { "a,b", "\"a,b\"" },   { "a\"b", "\"a\"\"b\"" },
                       { "a\nb", "\"a\nb\"" },         { "a\rb", "\"a\rb\"" }, { "", "" } };
    for( auto const& row : rows )
        EXPECT_EQ( printed( printCsv, { { { "x,y", {} } }, { { { "", row.text } } } } ),
                   String( "\"x,y\"\n" ) + row.csv + "\n" );
}

TEST( Json, IsOneObjectThatStartsWithItsFormat ) {
    std::ostringstream out;
    JsonAnswer( out ).members( { { "n\"", {} },
                                 { "flag", true },
                                 { "number", U32{ 0xFFFFFFFF } },
                                 { "handle", Hex( 16 ) },
                                 { "text", "a\xFF" },
                                 { "empty", List{} },
                                 { "none", Row{} },
                                 { "list", List{ U32{ 1 }, Row{ { "k", "v" } } } } } );
    EXPECT_EQ( out.str(), R"({
  "format": 1,
  "n\"": null,
  "flag": true,
  "number": 4294967295,
  "handle": 16,
  "text": "a\ufffd",
  "empty": [],
  "none": {},
  "list": [
    1,
    {
      "k": "v"
    }
  ]
}
)" );
}

} // namespace
