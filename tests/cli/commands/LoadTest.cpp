#include "tests/cli/Inputs.h"

#include "zel/Assert.h"
#include "zel/Trace.h"

#include <fstream>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <thread>
#include <zlib.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

char const* const commandsWithoutName[] = { "summary", "tables", "resources", "dump" };

class Loading : public InFolder {};

TEST_F( Loading, OfAMissingConfigurationIsStatus3AndReportsTheLogMessage ) {
    for( char const* const command : commandsWithoutName ) {
        auto const outcome = bfri( { command, "no.conf" } );
        EXPECT_EQ( outcome.status, 3 );
        EXPECT_THAT( outcome.out, IsEmpty() );
        EXPECT_EQ( outcome.err,
                   "bfri: can't use switch configuration no.conf\n"
                   "  problem:   No such file or directory\n"
                   "  reported:  There was an error in the provided switch.conf for profile no.conf: "
                   "No such file or directory. Correct the switch.conf file.\n" );
    }
}

TEST_F( Loading, OfABadConfigurationSaysWhereInIt ) {
    writeFile( "switch.conf", "{ \"devices\":\n  7 }" );
    for( char const* const command : commandsWithoutName ) {
        auto const outcome = bfri( { command, "switch.conf" } );
        EXPECT_EQ( outcome.status, 3 );
        EXPECT_THAT( outcome.err, HasSubstr( "\n  where:     line 2, column 3\n"
                                             "  expected:  \"devices\" to be an array\n"
                                             "  found:     a number\n" ) );
    }
}

TEST_F( Loading, OfAConfigurationThatIsNoJsonEndsItsSentenceOnce ) {
    writeFile( "switch.conf", "{ \"devices\": [,] }" );
    EXPECT_EQ( bfri( { "summary", "switch.conf" } ).err,
               "bfri: can't use switch configuration switch.conf\n"
               "  problem:   line 1, column 15: Invalid value.\n"
               "  reported:  There was an error in the provided switch.conf for profile switch.conf: "
               "switch.conf:1:15: Invalid value. Correct the switch.conf file.\n"
               "'bfri check switch.conf' says more\n" );
}

TEST_F( Loading, OfABadConfigurationInJsonAnswersInJson ) {
    auto const outcome = bfri( { "tables", "no.conf", "--json" } );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( compact( parsed( outcome.out ) ),
                 StartsWith( R"({"format":1,"error":"can't use switch configuration no.conf: )"
                             R"(No such file or directory","suggestions":[],)"
                             R"("failure":{"file":"no.conf","isContextFile":false,"problem":"No such )" ) );
}

TEST_F( Loading, OfABadContextFileInJsonSaysWhereInItsSentence ) {
    struct {
        char const* conf;
        char const* context;
        char const* error;
    } const rows[] = {
        { nullptr, R"({"tables":[{"name":"x"}]})",
          R"(can't use context file context.json: expected an object that has this member (at /tables/0, member "table_type", table 0 "x"), found an object with "name")" },
        { nullptr, "{",
          "can't use context file context.json: line 1, column 2: Missing a name for object member." },
        { R"({"devices":7})", "{}",
          R"(can't use switch configuration switch.conf: expected "devices" to be an array (line 1, column 12), found a number)" },
    };
    for( auto const& row : rows ) {
        writeSwitchConf( "context.json" );
        if( row.conf )
            writeFile( "switch.conf", row.conf );
        writeFile( "context.json", row.context );
        auto const answer = parsed( bfri( { "tables", "switch.conf", "--json" } ).out );
        EXPECT_STREQ( answer[ "error" ].GetString(), row.error );
    }
}

/// Writes a text as gzip.
void writeGzip( char const* path, String const& text ) {
    gzFile const file = gzopen( path, "wb" );
    gzwrite( file, text.data(), static_cast<unsigned>( text.size() ) );
    gzclose( file );
}

TEST_F( Loading, TakesTheSwitchConfOfAFolder ) {
    std::filesystem::create_directory( "leaf" );
    EXPECT_THAT( bfri( { "summary", "leaf" } ).err,
                 HasSubstr( "\n  hint:      that folder has no switch.conf" ) );
    writeFile( "leaf/context.json", contextOf( matchTable( "acl", 1 ) ) );
    writeFile( "leaf/switch.conf",
               R"({"devices":[{"pipelines":[{"context_file":"context.json","pipes":[0]}]}]})" );
    auto const outcome = bfri( { "summary", "leaf", "--json" } );
    EXPECT_EQ( outcome.status, 0 );
    auto const answer = parsed( outcome.out );
    EXPECT_STREQ( answer[ "switchConf" ].GetString(), "leaf/switch.conf" );
    EXPECT_EQ( answer[ "counts" ][ "bfTables" ].GetUint(), 1U );
}

TEST_F( Loading, TakesAContextFileAloneAsTheProgramOfPipe0 ) {
    String const text = contextOf( matchTable( "acl", 1 ) );
    String const context =
        R"({"compiler":{"devices":[1],"version":[["9"]]},)" + text.substr( text.find( '{' ) + 1 );
    writeFile( "plain.json", context );
    writeGzip( "packed", context );
    for( char const* const path : { "plain.json", "packed" } ) {
        auto const summary = parsed( bfri( { "summary", path, "--json" } ).out );
        EXPECT_STREQ( summary[ "switchConf" ].GetString(), path );
        EXPECT_STREQ( summary[ "bfrtConfig" ].GetString(), "" );
        ASSERT_EQ( summary[ "contextFile" ].Size(), 1U );
        EXPECT_EQ( summary[ "contextFile" ][ 0 ][ "pipeMask" ].GetUint(), 1U );
        EXPECT_EQ( summary[ "contextFile" ][ 0 ][ "path" ].GetString(), std::filesystem::absolute( path ) );
        EXPECT_THAT( bfri( { "summary", path } ).out, HasSubstr( "switch configuration    -\n" ) );
        EXPECT_STREQ( parsed( bfri( { "dump", path } ).out )[ "switchConf" ].GetString(), path );
        EXPECT_THAT( bfri( { "tables", path, "--csv" } ).out, HasSubstr( "acl" ) );
        EXPECT_EQ( bfri( { "check", path } ).status, bfri( { "check", path, "--json" } ).status );
    }
}

TEST_F( Loading, TellsAContextFileByItsFirstKnownMember ) {
    writeFile( "both", R"({"devices":[],"tables":7})" ); // a switch configuration without devices
    EXPECT_EQ( bfri( { "summary", "both" } ).status, 0 );
    for( char const* const text : { R"({"tables":7})", R"({"x":{"devices":1},"tables":7})",
                                    R"({"phv_allocation":[]})", R"({"tables":[1)" } ) {
        writeFile( "context", text );
        auto const outcome = bfri( { "summary", "context" } );
        EXPECT_EQ( outcome.status, 3 );
        EXPECT_THAT( outcome.err, HasSubstr( "can't use context file " ) ) << text;
    }
    for( char const* const text :
         { "", "7", "[{\"tables\":1}]", "{", R"({"x":1})", R"({"x":{"tables":1}})" } ) {
        writeFile( "other", text );
        EXPECT_THAT( bfri( { "summary", "other" } ).err, HasSubstr( "can't use switch configuration other" ) )
            << text;
    }
}

TEST_F( Loading, OfAGzipSwitchConfigurationReadsItAsAContextFile ) {
    writeGzip( "switch.conf", R"({"devices":[]})" );
    auto const outcome = bfri( { "summary", "switch.conf" } );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.err, HasSubstr( "can't use context file " ) );
    EXPECT_THAT( outcome.err, HasSubstr( "\"tables\"" ) );
}

TEST_F( Loading, NamesThePipelineThatALaterOneWithTheSamePipesHides ) {
    writeFile( "a.json", contextOf( matchTable( "acl", 1 ) ) );
    writeFile( "b.json", contextOf( matchTable( "lpm", 2 ) ) );
    writeFile( "switch.conf", R"({"devices":[{"pipelines":[{"context_file":"a.json","pipes":[0,1]},)"
                              R"({"context_file":"b.json","pipes":[1,0]}]}]})" );
    auto const outcome = bfri( { "tables", "switch.conf", "--csv" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_EQ( outcome.err, "bfri: a.json is not read: a later pipeline has the same pipes\n" );
    EXPECT_THAT( outcome.out, HasSubstr( "lpm" ) );
}

TEST_F( Loading, KeepsConfigurationNamesFromTheTerminal ) {
    EXPECT_THAT( bfri( { "summary", "a\x1B%s.conf" } ).err, HasSubstr( "profile a\\x1b%s.conf: No such" ) );
}

TEST_F( Loading, TracesToTheGivenStream ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", contextOf( "" ) );
    auto& handle = Zel::TraceHandle::byName( "BfResourceParser" );
    handle.levelIs( 6, true );
    auto const outcome = bfri( { "summary", "switch.conf" } );
    handle.levelIs( 6, false );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_THAT( outcome.err, HasSubstr( "BfResourceParser/6 " ) );
    EXPECT_THAT( outcome.err, HasSubstr( ": Preprocessing done\n" ) );
}

unsigned linesOfTheTest = 0;

TEST_F( Loading, LeavesTheProcessAsItWas ) {
    writeSwitchConf( "missing.json" );
    Zel::traceSinkIs( []( Zel::TraceLine const& ) { ++linesOfTheTest; } );
    for( char const* const conf : { "switch.conf", "no.conf" } ) {
        EXPECT_EQ( bfri( { "summary", conf } ).status, 3 );
        EXPECT_EQ( Zel::assertionHandlerIs( nullptr ), nullptr );
    }
    Zel::traceEmit( { "test", 0, 1, "f", "text" } );
    Zel::traceSinkIs( {} );
    EXPECT_EQ( linesOfTheTest, 1U );
}

} // namespace
