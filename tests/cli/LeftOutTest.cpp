#include "cli/LeftOut.h"

#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using namespace Support;

constexpr char const* of =
    "context.json has the match table \"pipe.marks\", which the model leaves out: it has 1 "
    "static entry";
constexpr char const* ofAction =
    "context.json has the action \"mark\" of the match table \"pipe.marks\", which "
    "the model leaves out: it has 1 static entry";

class LeftOut : public InFolder {
  protected:
    LeftOut() {
        writeFile( "context.json", ContextBuilder()
                                       .table( Support::matchTable( "pipe.acl" ).handle( 1 ) )
                                       .table( Support::matchTable( "pipe.marks" )
                                                   .handle( 7 )
                                                   .stages( {} )
                                                   .action( "mark" )
                                                   .with( "/actions/1/handle", "77" )
                                                   .with( "/static_entries", "[{}]" ) )
                                       .text() );
        writeFile( "switch.conf",
                   SwitchConfBuilder()
                       .device( DeviceBuilder().runtimeConfig( "r" ).pipeline( "context.json", { 1 } ) )
                       .text() );
    }
};

TEST_F( LeftOut, IsKnownByNameAndByTheEndOfIt ) {
    auto const model = BfResourceInfo::bfResourceInfoIntfFactory( "switch.conf" );
    EXPECT_EQ( Bfri::leftOutOfName( *model->parser(), "pipe.marks" ), of );
    EXPECT_EQ( Bfri::leftOutOfName( *model->parser(), "marks" ), of );
    EXPECT_EQ( Bfri::leftOutOfName( *model->parser(), "mark" ), ofAction );
    for( char const* const word : { "pipe.acl", "acl", "arks", "" } )
        EXPECT_THAT( Bfri::leftOutOfName( *model->parser(), word ), IsEmpty() ) << word;
}

TEST_F( LeftOut, IsKnownByHandle ) {
    auto const model = BfResourceInfo::bfResourceInfoIntfFactory( "switch.conf" );
    EXPECT_EQ( Bfri::leftOutOfHandle( *model->parser(), 0x10000007 ), of );
    EXPECT_EQ( Bfri::leftOutOfHandle( *model->parser(), 0x10000000 + 77 ), ofAction );
    for( U32 const handle : { 7U, 0x10000001U, 0U } )
        EXPECT_THAT( Bfri::leftOutOfHandle( *model->parser(), handle ), IsEmpty() ) << handle;
}

TEST_F( LeftOut, IsSaidOfAHandleThatIsLookedUp ) {
    auto const outcome = bfri( { "lookup", "switch.conf", "0x10000007" } );
    EXPECT_EQ( outcome.status, 1 );
    EXPECT_EQ( outcome.err, "bfri: nothing has the handle 0x10000007; " + String( of ) + "\n" );
}

TEST_F( LeftOut, IsSaidOfAFieldThatIsAskedFor ) {
    EXPECT_THAT( bfri( { "field", "switch.conf", "table", "marks", "size" } ).err,
                 HasSubstr( String( " 'marks': " ) + of + "\n" ) );
    EXPECT_THAT( bfri( { "field", "switch.conf", "action", "mark of marks", "handle" } ).err,
                 HasSubstr( String( " 'mark': " ) + ofAction + "\n" ) );
}

TEST_F( LeftOut, IsSaidOfANameThatIsAskedFor ) {
    for( char const* const command : { "table", "show" } ) {
        auto const outcome = bfri( { command, "switch.conf", "marks" } );
        EXPECT_EQ( outcome.status, 1 );
        EXPECT_THAT( outcome.err, HasSubstr( String( " 'marks': " ) + of + "\n" ) );
    }
}

TEST_F( LeftOut, IsNotSaidOfOtherNames ) {
    EXPECT_EQ( bfri( { "table", "switch.conf", "acl" } ).status, 0 );
    EXPECT_EQ( bfri( { "table", "switch.conf", "akl" } ).err,
               "bfri: no match table 'akl'; names like it:\n  pipe.acl\n" );
}

} // namespace
