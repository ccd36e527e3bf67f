#include "tests/cli/Inputs.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

String contentOf( char const* path ) {
    std::ifstream file( path, std::ios::binary );
    return { std::istreambuf_iterator<char>( file ), {} };
}

/// The built program, run by a shell that it replaces, so that its death by a signal is seen. Core files are
/// of no use here.
class Program : public InFolder {
  protected:
    Program() {
        writeSwitchConf( "context.json" );
        writeFile( "context.json", contextOf( matchTable( "pipe.lpm", 1 ) ) );
    }

    /// Runs it and returns the wait status; the outputs end up in files.
    int run( String const& arguments, String const& out = "out" ) {
        return std::system(
            ( "ulimit -c 0; exec " BFRI_PROGRAM " " + arguments + " >" + out + " 2>err" ).c_str() );
    }
    int exitStatus( String const& arguments, String const& out = "out" ) {
        int const status = run( arguments, out );
        return WIFEXITED( status ) ? WEXITSTATUS( status ) : -1;
    }
};

TEST_F( Program, AnswersOnStandardOutputAlone ) {
    EXPECT_EQ( exitStatus( "tables switch.conf --csv" ), 0 );
    EXPECT_THAT( contentOf( "out" ), StartsWith( "name,handle,size" ) );
    EXPECT_THAT( contentOf( "out" ), HasSubstr( "\npipe.lpm,1,64,64,false," ) );
    EXPECT_THAT( contentOf( "err" ), IsEmpty() );
}

TEST_F( Program, TracesOnStandardErrorAlone ) {
    setenv( "ZEL_TRACE", "BfResourceParser/5-7", 1 );
    for( char const* const command : { "dump", "summary --json" } ) {
        EXPECT_EQ( exitStatus( String( command ) + " switch.conf" ), 0 );
        parsed( contentOf( "out" ) );
        EXPECT_THAT( contentOf( "err" ), HasSubstr( "BfResourceParser/7 " ) );
        EXPECT_THAT( contentOf( "err" ), HasSubstr( ": Parsed table pipe.lpm\n" ) );
    }
    unsetenv( "ZEL_TRACE" );
}

TEST_F( Program, DumpsWhatItLoaded ) {
    EXPECT_EQ( exitStatus( "dump switch.conf" ), 0 );
    auto const dump = parsed( contentOf( "out" ) );
    EXPECT_STREQ( dump[ "bfTables" ][ 0 ][ "name" ].GetString(), "pipe.lpm" );
    EXPECT_EQ( compact( dump[ "contextFile" ] ), R"([{"pipeMask":3,"path":"context.json"}])" );
    EXPECT_EQ( compact( dump[ "resourceHandles" ] ),
               R"([{"handle":1,"name":"pipe.lpm","size":64,"stageStart":3,"statReferences":[],)"
               R"("meterReferences":[],"statefulReferences":[]}])" );
}

TEST_F( Program, EndsWithTheStatusOfTheOutcome ) {
    EXPECT_EQ( exitStatus( "--help" ), 0 );
    EXPECT_EQ( exitStatus( "table switch.conf zzz" ), 1 );
    EXPECT_EQ( exitStatus( "frobnicate" ), 2 );
    EXPECT_EQ( exitStatus( "summary missing.conf" ), 3 );
    EXPECT_EQ( exitStatus( "dump missing.conf" ), 3 );
    writeFile( "context.json", "[]" );
    EXPECT_EQ( exitStatus( "summary switch.conf" ), 3 );
    EXPECT_THAT( contentOf( "err" ), StartsWith( "bfri: can't use context file context.json\n" ) );
}

TEST_F( Program, DumpingBadDataDiesAsTheLibraryDoes ) {
    writeFile( "context.json", R"({ "tables": {} })" );
    int const status = run( "dump switch.conf" );
    ASSERT_TRUE( WIFSIGNALED( status ) );
    EXPECT_EQ( WTERMSIG( status ), SIGABRT );
    EXPECT_THAT( contentOf( "out" ), IsEmpty() );
    EXPECT_THAT( contentOf( "err" ), HasSubstr( "assertion failed: d[ \"tables\" ].IsArray()\n"
                                                "in context file context.json at /tables\n" ) );
}

TEST_F( Program, SaysWhenTheDiskIsFull ) {
    for( char const* const arguments : { "summary switch.conf", "tables switch.conf --csv",
                                         "dump switch.conf", "--help", "table switch.conf zzz --json" } ) {
        EXPECT_EQ( exitStatus( arguments, "/dev/full" ), 4 ) << arguments;
        EXPECT_EQ( contentOf( "err" ), "bfri: can't write to standard output: No space left on device\n" );
    }
}

TEST_F( Program, EndsInSilenceWhenTheReaderIsGone ) {
    int ends[ 2 ];
    ASSERT_EQ( pipe( ends ), 0 );
    close( ends[ 0 ] );
    int const status = run( "tables switch.conf", "&" + std::to_string( ends[ 1 ] ) );
    close( ends[ 1 ] );
    ASSERT_TRUE( WIFSIGNALED( status ) );
    EXPECT_EQ( WTERMSIG( status ), SIGPIPE );
    EXPECT_THAT( contentOf( "err" ), IsEmpty() );
}

} // namespace
