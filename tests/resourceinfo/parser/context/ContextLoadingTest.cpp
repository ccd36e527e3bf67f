#include "resourceinfo/parser/context/ContextFile.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::failureOf;
using Support::matchTable;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// A context that has something of everything.
ContextBuilder fullContext() {
    return ContextBuilder()
        .table( matchTable( "acl" )
                    .size( 512 )
                    .idleTime( 3 )
                    .statistics( "acl.counter" )
                    .action( "permit", { "acl.meter" } ) )
        .table( Support::conditionTable( "if" ) )
        .table( matchTable( "lpm" ).action( "forward", { "acl.meter" } ) )
        .learnQuanta( "digest" )
        .phvStage( "hdr.eth", 6 )
        .flexibleHeader( "eth", 112 )
        .dynamicHash( "lag", { "ip.src", "ip.dst" } );
}

class ContextLoading : public testing::Test {
  protected:
    /// The model of one context file.
    static String load( String const& path, BfResourceParserContext const& context = {} ) {
        auto const parser = emptyParser();
        parseContextJson( parser.get(), path, context );
        return modelText( *parser );
    }
    String loadText( std::string_view text ) const { return load( folder_.write( "context.json", text ) ); }
    Zel::AssertionFailure failureOfText( std::string_view text ) const {
        return failureOf( [ & ] { loadText( text ); } );
    }

    Support::TemporaryFolder folder_;
};

TEST_F( ContextLoading, CompressedAndPlainFilesGiveTheSameModel ) {
    String const text = fullContext().text();
    String const plain = load( folder_.write( "plain.json", text ) );
    EXPECT_THAT( plain, HasSubstr( "acl" ) );
    EXPECT_EQ( load( folder_.writeGzip( "compressed.json", text ) ), plain );
}

TEST_F( ContextLoading, FileNameSaysNothingOfItsCompression ) {
    String const text = fullContext().text();
    EXPECT_EQ( load( folder_.write( "plain.gz", text ) ),
               load( folder_.writeGzip( "compressed.json", text ) ) );
}

TEST_F( ContextLoading, SeveralCompressedPartsAreOneFile ) {
    String const text = fullContext().text();
    String const half = text.substr( 0, text.size() / 2 );
    EXPECT_EQ(
        load( folder_.write( "parts", Support::gzip( half ) + Support::gzip( text.substr( half.size() ) ) ) ),
        loadText( text ) );
}

TEST_F( ContextLoading, FilesAroundTheBufferSizeAreReadToTheirLastCharacter ) {
    String const expected = loadText( fullContext().text() );
    for( std::size_t const size : { 4095U, 4096U, 4097U, 8191U, 8192U, 8193U } ) {
        auto const sizeWithout = fullContext().with( "/program_name", "\"\"" ).text().size();
        String const filler( size - sizeWithout, 'x' );
        String const text = fullContext().with( "/program_name", ( '"' + filler + '"' ).c_str() ).text();
        ASSERT_EQ( text.size(), size );
        EXPECT_EQ( loadText( text ), expected ) << size;
        EXPECT_EQ( load( folder_.writeGzip( "compressed.json", text ) ), expected ) << size;
        String const trailingSpace = fullContext().text();
        EXPECT_EQ( loadText( trailingSpace + String( size - trailingSpace.size(), '\n' ) ), expected )
            << size;
        EXPECT_EQ( failureOfText( text.substr( 0, size - 1 ) ).condition, "IsObject()" ) << size;
    }
}

TEST_F( ContextLoading, MissingFileIsTracedAndFatal ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    String const path = folder_.path( "absent.json" );
    auto const failure = failureOf( [ & ] { load( path ); } );
    EXPECT_EQ( failure.condition, "IsObject()" );
    EXPECT_EQ( failure.source, "BfResourceParser" );
    EXPECT_THAT( failure.position,
                 AllOf( StartsWith( "context file " + path ), HasSubstr( "No such file" ) ) );
    EXPECT_THAT( trace.texts(),
                 ElementsAre( "Can't open context file " + path + ": No such file or directory" ) );
    EXPECT_EQ( trace.lines()[ 0 ].level, 0 );
}

TEST_F( ContextLoading, FolderAsAFileIsTracedAndFatal ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    auto const failure = failureOf( [ & ] { load( folder_.path() ); } );
    EXPECT_EQ( failure.condition, "IsObject()" );
    EXPECT_THAT( trace.texts(),
                 ElementsAre( "Can't read context file " + folder_.path() + ": Is a directory" ) );
}

TEST_F( ContextLoading, CutOffCompressionIsTracedAndFatal ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    String const bytes = Support::gzip( fullContext().text() );
    String const path = folder_.write( "cut.json", bytes.substr( 0, bytes.size() / 2 ) );
    auto const failure = failureOf( [ & ] { load( path ); } );
    EXPECT_EQ( failure.condition, "IsObject()" );
    EXPECT_THAT( failure.position, StartsWith( "context file " + path ) );
    EXPECT_THAT( trace.texts(),
                 ElementsAre( "Can't read context file " + path + ": unexpected end of file" ) );
}

TEST_F( ContextLoading, DamagedCompressionIsToldFromBadJson ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    String bytes = Support::gzip( R"({"tables":[,]})" );
    bytes[ bytes.size() - 8 ] ^= 1; // the first byte of the checksum
    String const path = folder_.write( "damaged.json", bytes );
    auto const failure = failureOf( [ & ] { load( path ); } );
    EXPECT_EQ( failure.condition, "IsObject()" );
    EXPECT_EQ( failure.position, "context file " + path + ": can't read it: incorrect data check" );
    EXPECT_THAT( trace.texts(), ElementsAre( "Can't read context file " + path + ": incorrect data check" ) );
}

TEST_F( ContextLoading, EmptyFileIsFatal ) {
    EXPECT_EQ( failureOfText( "" ).condition, "IsObject()" );
    EXPECT_EQ( failureOfText( " \n" ).condition, "IsObject()" );
    EXPECT_EQ( failureOf( [ & ] { load( folder_.writeGzip( "empty", "" ) ); } ).condition, "IsObject()" );
}

TEST_F( ContextLoading, WhatIsNoJsonIsFatalAndSaysWhere ) {
    struct Row {
        char const* text;
        char const* place;
    };
    for( auto const& [ text, place ] :
         { Row{ "{", "line 1, column 2" }, Row{ "{\n  \"tables\": [,]\n}", "line 2, column 14" },
           Row{ "{ \"tables\": [], }", "line 1, column 17" }, Row{ "{ 'tables': [] }", "line 1, column 3" },
           Row{ "{ \"tables\": [] } x", "line 1, column 18" }, Row{ "{} {}", "line 1, column 4" },
           Row{ "{ \"a\": NaN }", "line 1, column 8" }, Row{ "// comment\n{}", "line 1, column 1" },
           Row{ "{ \"a\": 01 }", "line 1, column 9" }, Row{ "{ \"a\": \"\t\" }", "line 1, column 9" },
           Row{ "\xEF\xBB\xBF{}", "line 1, column 1" }, Row{ "{ \"a\": tru }", "line 1, column" } } ) {
        auto const failure = failureOfText( text );
        EXPECT_EQ( failure.condition, "IsObject()" ) << text;
        EXPECT_THAT( failure.position, AllOf( StartsWith( "context file " + folder_.path( "context.json" ) ),
                                              HasSubstr( place ) ) )
            << text;
    }
}

TEST_F( ContextLoading, RootThatIsNoObjectIsFatal ) {
    for( char const* text : { "null", "[]", "1", "\"tables\"", "true" } )
        EXPECT_EQ( failureOfText( text ).condition, "IsObject()" ) << text;
}

TEST_F( ContextLoading, NulBehindTheRootEndsTheFile ) {
    String const text = fullContext().text();
    String const expected = loadText( text );
    EXPECT_EQ( loadText( text + String( "\0garbage {", 10 ) ), expected );
    EXPECT_EQ( loadText( text + " " + String( 5000, '\0' ) ), expected );
    EXPECT_EQ( failureOfText( text.substr( 0, text.size() - 1 ) + String( "\0}", 2 ) ).condition,
               "IsObject()" );
}

TEST_F( ContextLoading, DamageBehindANulIsDamageAllTheSame ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    String const bytes = Support::gzip( fullContext().text() + String( 100000, '\0' ) );
    EXPECT_EQ(
        failureOf( [ & ] { load( folder_.write( "cut", bytes.substr( 0, bytes.size() - 4 ) ) ); } ).condition,
        "IsObject()" );
}

/// A context with a member that nests that many levels deep, the root counted.
String nested( int levels, char const* open, char const* close ) {
    String inner;
    String end;
    for( int i = 1; i < levels; ++i ) {
        inner += open;
        end += close;
    }
    String text = ContextBuilder().text();
    return text.insert( text.size() - 1, ",\"deep\":" + inner + "0" + end );
}

TEST_F( ContextLoading, ThousandLevelsOfNestingAreAllowedAndNoMore ) {
    String const expected = loadText( ContextBuilder().text() );
    for( auto const& [ open, close ] : { std::pair( "[", "]" ), std::pair( "{\"a\":", "}" ) } ) {
        EXPECT_EQ( loadText( nested( 1000, open, close ) ), expected ) << open;
        auto const failure = failureOfText( nested( 1001, open, close ) );
        EXPECT_EQ( failure.condition, "IsObject()" ) << open;
        EXPECT_THAT( failure.position, HasSubstr( "More than 1000 levels of nesting" ) );
        EXPECT_EQ( failureOfText( nested( 300000, open, close ) ).condition, "IsObject()" ) << open;
    }
}

TEST_F( ContextLoading, LevelsCountWhatIsOpenAtOnce ) {
    String many = "0";
    for( int i = 0; i < 3000; ++i )
        many += ",[],{}";
    String text = ContextBuilder().text();
    text.insert( text.size() - 1, ",\"wide\":[" + many + "]" );
    EXPECT_EQ( loadText( text ), loadText( ContextBuilder().text() ) );
}

TEST_F( ContextLoading, FirstMemberOfANameCounts ) {
    auto const table = [ & ]( char const* name ) { return matchTable( name ).text(); };
    String const text = R"({"tables":[)" + table( "first" ) + R"(],"tables":[)" + table( "second" ) +
                        R"(],"learn_quanta":[],"phv_allocation":[],"dynamic_hash_calculations":[]})";
    String const model = loadText( text );
    EXPECT_THAT( model, HasSubstr( "first" ) );
    EXPECT_THAT( model, testing::Not( HasSubstr( "second" ) ) );
}

TEST_F( ContextLoading, WhiteSpaceAndEscapesDoNotMatter ) {
    String const text = R"( {
	"program_name" : "\u00e9\ud83d\ude00\"\\\/\b\f\n\r\t" ,
	"t\u0061bles" : [ ] , "learn_quanta" : [ ] ,
	"phv_allocation" : [
	] , "dynamic_hash_calculations" : [ ] }  )";
    EXPECT_EQ( loadText( text ), loadText( ContextBuilder().text() ) );
}

TEST_F( ContextLoading, BytesOfTextsAreKeptAsTheyAre ) {
    String const name = "\xFF\xC3\x28 \xE2\x82\xAC";
    EXPECT_THAT( loadText( ContextBuilder().table( matchTable( name ) ).text() ),
                 HasSubstr( "  " + name + " " ) );
    auto const escaped =
        ContextBuilder().table( matchTable( "acl" ).with( "/name", R"("\u20ac\ud83d\ude00")" ) );
    EXPECT_THAT( loadText( escaped.text() ), HasSubstr( "  \xE2\x82\xAC\xF0\x9F\x98\x80 " ) );
    auto const halfAPair = ContextBuilder().table( matchTable( "acl" ).with( "/name", R"("\ud83d")" ) );
    EXPECT_EQ( failureOfText( halfAPair.text() ).condition, "IsObject()" );
}

TEST_F( ContextLoading, OrderOfMembersDoesNotMatter ) {
    auto const reversed =
        ContextBuilder().without( "/tables" ).with( "/tables", fullContext().tree().at( "/tables" ) );
    auto const plain = ContextBuilder().with( "/tables", fullContext().tree().at( "/tables" ) );
    EXPECT_EQ( loadText( reversed.text() ), loadText( plain.text() ) );
}

TEST_F( ContextLoading, TablesMayReferToTablesBehindThem ) {
    auto const parser = emptyParser();
    parseContextJson( parser.get(),
                      folder_.write( "context.json", ContextBuilder()
                                                         .table( matchTable( "acl" ).actionData( "adt" ) )
                                                         .table( Support::actionDataTable( "adt" ).size( 9 ) )
                                                         .text() ),
                      {} );
    EXPECT_EQ( parser->bfTables().at( 0 ).maxAdtEntries, 9 );
}

TEST_F( ContextLoading, SecondFileAppendsAndItsHitBitsFollow ) {
    auto const parser = emptyParser();
    for( char const* name : { "first", "second" } ) {
        String const path = folder_.write(
            name, ContextBuilder().table( matchTable( name ).size( 1000 ).idleTime( 3 ) ).text() );
        parseContextJson( parser.get(), path, {} );
    }
    ASSERT_EQ( parser->bfTables().size(), 2 );
    EXPECT_EQ( parser->bfTables().at( 0 ).hitBitSmashOffset, 0 );
    EXPECT_EQ( parser->bfTables().at( 1 ).hitBitSmashOffset, 33 );
    EXPECT_EQ( parser->bfTables().at( 1 ).hitBitSmashLast, 65 );
    EXPECT_EQ( parser->hitBitSmashEntries(), 66 );
}

TEST_F( ContextLoading, LogicalPipeIsReadOffTheFilesName ) {
    String const text = ContextBuilder().table( matchTable( "acl" ) ).text();
    EXPECT_THAT( load( folder_.write( "context_a.json", text ) ), HasSubstr( "pipe=a" ) );
    EXPECT_THAT( load( folder_.writeGzip( "pipe/context_b.json", text ) ), HasSubstr( "pipe=b" ) );
}

TEST_F( ContextLoading, LoadingLeavesNothingBehindInThePosition ) {
    loadText( fullContext().text() );
    EXPECT_EQ( failureOf( [ & ] { emptyInterface()->bfResource( 0 ); } ).position, "" );
    failureOfText( "null" );
    EXPECT_EQ( failureOf( [ & ] { emptyInterface()->bfResource( 0 ); } ).position, "" );
}

} // namespace
} // namespace BfResourceInfo
