#include "inspect/rows/CsvFormat.h"
#include "inspect/rows/JsonFormat.h"

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

String csvOf( RowList const& rows, String ( *spelling )( std::string_view ) = nullptr ) {
    std::ostringstream out;
    printCsv( out, rows, spelling );
    return out.str();
}

TEST( Csv, HasAHeaderAndPlainNumbers ) {
    EXPECT_EQ( csvOf( list ), "NAME,SIZE,HANDLE,ON,REFS\n"
                              "a.b,5,266,true,1 2\n"
                              "\xC3\xA9\x1B,1000,,false,\n" );
    EXPECT_EQ( csvOf( { list.header, {} } ), "NAME,SIZE,HANDLE,ON,REFS\n" );
}

TEST( Csv, QuotesFieldsThatNeedIt ) {
    struct {
        char const* text;
        char const* csv;
    } const rows[] = { { "plain text", "plain text" }, { "a,b", "\"a,b\"" },   { "a\"b", "\"a\"\"b\"" },
                       { "a\nb", "\"a\nb\"" },         { "a\rb", "\"a\rb\"" }, { "", "" } };
    for( auto const& row : rows )
        EXPECT_EQ( csvOf( { { { "x,y", {} } }, { { { "", row.text } } } } ),
                   String( "\"x,y\"\n" ) + row.csv + "\n" );
}

TEST( Csv, MayHaveItsTextsSpelledInAnotherWay ) {
    auto const loud = []( std::string_view text ) { return String( text ) + "!"; };
    EXPECT_EQ( csvOf( { { { "name", {} }, { "size", {} } }, { { { "", "a" }, { "", U32{ 1 } } } } }, loud ),
               "name,size\na!,1\n" );
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
