#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// Two configurations in folders, with tables of different sizes, and one that can't be loaded.
class SeveralConfigurations : public InFolder {
  protected:
    SeveralConfigurations() {
        write( "a", { { "acl", 10 }, { "lpm", 300 } } );
        write( "b", { { "acl", 20 } } );
        std::filesystem::create_directories( "bad" );
        writeFile( "bad/switch.conf", "{" );
    }
    static void write( String const& folder, std::vector<std::pair<char const*, U32>> const& tables ) {
        std::filesystem::create_directories( "all/" + folder );
        Support::ContextBuilder context;
        for( auto const& [ name, size ] : tables )
            context.table( Support::matchTable( name ).size( size ) );
        writeFile( "all/" + folder + "/context.json", context.text() );
        writeFile( "all/" + folder + "/switch.conf",
                   Support::SwitchConfBuilder()
                       .device( Support::DeviceBuilder().pipeline( "context.json", { 0 } ) )
                       .text() );
    }
};

TEST_F( SeveralConfigurations, AreListedWithTheirPaths ) {
    auto const answer = bfri( { "tables", "all/a", "all/b/switch.conf", "--csv", "--sort", "-size" } );
    EXPECT_EQ( answer.status, 0 );
    EXPECT_THAT( answer.out, StartsWith( "conf,name,handle,size," ) );
    EXPECT_THAT( answer.out, HasSubstr( "\nall/a,lpm," ) );
    EXPECT_THAT( answer.out, HasSubstr( "\nall/b/switch.conf,acl," ) );
    EXPECT_LT( answer.out.find( "all/a,lpm" ), answer.out.find( "all/b/switch.conf,acl" ) );
    EXPECT_THAT( bfri( { "tables", "all/a", "all/b" } ).out, StartsWith( "CONF   HANDLE" ) );
    EXPECT_THAT( bfri( { "tables", "all/a", "all/b" } ).out, HasSubstr( "\nall/b  0x" ) );
}

TEST_F( SeveralConfigurations, OfAFolderAreThoseInIt ) {
    auto const json = parsed( bfri( { "tables", "all", "--json", "--where", "name=acl and conf~=b" } ).out );
    EXPECT_THAT( memberNames( json ), ElementsAre( "format", "bfTables", "failures" ) );
    ASSERT_EQ( json[ "bfTables" ].Size(), 1U );
    EXPECT_STREQ( json[ "bfTables" ][ 0 ][ "conf" ].GetString(), "all/b/switch.conf" );
    EXPECT_EQ( json[ "bfTables" ][ 0 ][ "size" ].GetUint(), 20U );
    // A folder with one configuration is that.
    EXPECT_FALSE(
        parsed( bfri( { "tables", "all/a", "--json" } ).out )[ "bfTables" ][ 0 ].HasMember( "conf" ) );
    EXPECT_EQ( bfri( { "check", "all" } ).out.find( "all/a/switch.conf: " ), 0U );
}

TEST_F( SeveralConfigurations, WithABadOneTellItAndListTheOthers ) {
    auto const answer = bfri( { "tables", "all/a", "bad", "missing.conf", "all/b", "--json" } );
    EXPECT_EQ( answer.status, 3 );
    EXPECT_THAT( answer.err, HasSubstr( "bfri: bad: can't use switch configuration bad/switch.conf\n" ) );
    EXPECT_THAT( answer.err, HasSubstr( "bfri: missing.conf: can't use " ) );
    auto const json = parsed( answer.out );
    EXPECT_EQ( json[ "bfTables" ].Size(), 3U );
    ASSERT_EQ( json[ "failures" ].Size(), 2U );
    EXPECT_STREQ( json[ "failures" ][ 0 ][ "conf" ].GetString(), "bad" );
    EXPECT_THAT( json[ "failures" ][ 1 ][ "error" ].GetString(), HasSubstr( "missing.conf" ) );
    // As one alone answers.
    auto const alone = parsed( bfri( { "tables", "bad", "--json" } ).out );
    for( char const* const member : { "error", "suggestions", "failure" } )
        EXPECT_EQ( compact( json[ "failures" ][ 0 ][ member ] ), compact( alone[ member ] ) );
}

TEST_F( SeveralConfigurations, HaveALineEachInASummary ) {
    auto const answer = bfri( { "summary", "all", "bad" } );
    EXPECT_EQ( answer.status, 3 );
    EXPECT_THAT( answer.out, StartsWith( "CONF               FILES  TABLES  RESOURCES  COUNTERS" ) );
    EXPECT_THAT( answer.out, HasSubstr( "\nall/a/switch.conf      1       2          2         0" ) );
    auto const json = parsed( bfri( { "summary", "all", "--json" } ).out );
    ASSERT_EQ( json[ "configurations" ].Size(), 2U );
    EXPECT_STREQ( json[ "configurations" ][ 1 ][ "conf" ].GetString(), "all/b/switch.conf" );
    EXPECT_EQ( json[ "configurations" ][ 1 ][ "counts" ][ "bfTables" ].GetUint(), 1U );
}

TEST_F( SeveralConfigurations, HaveAFieldEach ) {
    auto const answer = bfri( { "field", "all/a", "all/b", "table", "acl", "size" } );
    EXPECT_EQ( answer.status, 0 );
    EXPECT_EQ( answer.out, "all/a\t10\nall/b\t20\n" );
    auto const missing = bfri( { "field", "all/a", "all/b", "table", "lpm", "size" } );
    EXPECT_EQ( missing.status, 1 );
    EXPECT_EQ( missing.out, "all/a\t300\n" );
    EXPECT_THAT( missing.err, StartsWith( "bfri: all/b: no table 'lpm'" ) );
    EXPECT_EQ( bfri( { "field", "all/a", "bad", "table", "acl", "size" } ).status, 3 );
    EXPECT_EQ( bfri( { "field", "all", "table", "acl", "size" } ).out,
               "all/a/switch.conf\t10\nall/b/switch.conf\t20\n" );
    EXPECT_EQ( bfri( { "field", "all/a", "table", "acl", "size" } ).out, "10\n" );
    EXPECT_THAT( bfri( { "field", "all/a", "tabel", "acl", "size" } ).err, HasSubstr( "'tabel'" ) );
    EXPECT_EQ( bfri( { "field", "all/a", "table", "acl" } ).status, 2 );
}

TEST_F( SeveralConfigurations, HaveTheirNames ) {
    EXPECT_EQ( bfri( { "names", "all", "--kind", "table", "--filter", "^a" } ).out,
               "all/a/switch.conf\tacl\nall/b/switch.conf\tacl\n" );
    auto const json = parsed( bfri( { "names", "all", "bad", "--where", "kinds=action", "--json" } ).out );
    EXPECT_EQ( json[ "names" ].Size(), 2U );
    EXPECT_EQ( json[ "failures" ].Size(), 1U );
    EXPECT_THAT( bfri( { "names", "all", "--csv" } ).out, StartsWith( "conf,name,kinds\n" ) );
}

TEST_F( SeveralConfigurations, OfOneAreFilteredToo ) {
    EXPECT_EQ( bfri( { "names", "all/a", "--filter", "^l" } ).out, "lpm\n" );
    EXPECT_EQ( bfri( { "names", "all/a", "--where", "kinds=table and not name=lpm" } ).out, "acl\n" );
    EXPECT_THAT( bfri( { "tables", "all/a", "--where", "size<100" } ).out,
                 testing::Not( HasSubstr( "lpm" ) ) );
    auto const unknown = bfri( { "tables", "all/a", "--where", "sice<100" } );
    EXPECT_EQ( unknown.status, 2 );
    EXPECT_THAT( unknown.err,
                 StartsWith( "bfri: --where: no field 'sice'; the fields are name, handle, size" ) );
    EXPECT_EQ( bfri( { "names", "all/a", "--where", "size=1" } ).status, 2 );
    EXPECT_THAT( bfri( { "tables", "all/a", "--where", "size=1" } ).err,
                 HasSubstr( "no row matches 'size=1'" ) );
    EXPECT_EQ( bfri( { "names", "all/a", "--where", "kinds=foo" } ).err,
               "bfri: no row matches 'kinds=foo'\n" );
    EXPECT_EQ( bfri( { "names", "all", "--filter", "zzz" } ).err, "bfri: no name matches 'zzz'\n" );
    EXPECT_THAT( bfri( { "names", "all", "--where", "name~=[" } ).err,
                 StartsWith( "bfri: can't use --where '['" ) );
}

TEST_F( SeveralConfigurations, HaveHelpForTheirConditions ) {
    for( char const* const command : { "tables", "names", "phv" } )
        EXPECT_THAT( bfri( { command, "--help" } ).out,
                     HasSubstr( "\n--where compares fields with values: " ) );
    EXPECT_THAT( bfri( { "summary", "--help" } ).out, testing::Not( HasSubstr( "--where" ) ) );
}

TEST_F( SeveralConfigurations, AreTooManyForACommandOfOne ) {
    EXPECT_THAT( bfri( { "stages", "all" } ).err,
                 HasSubstr( "; this command takes one configuration, and there are 2 below it: "
                            "all/a/switch.conf, ...\n" ) );
    EXPECT_THAT( bfri( { "show", "all/..", "acl" } ).err, HasSubstr( " there are 3 below it: " ) );
}

} // namespace
