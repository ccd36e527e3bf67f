// Configurations that are loaded side by side: each answers for itself, whoever asks and when.

#include "inspect/check/Checked.h"
#include "inspect/page/Page.h"
#include "inspect/rows/JsonFormat.h"
#include "inspect/stages/StageMap.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>
#include <sstream>
#include <thread>

namespace {

/// Findings, stages and the page of every table, as JSON.
String toldBy( Bfri::Configuration const& configuration ) {
    std::ostringstream out;
    Bfri::Row row = rowOf( Bfri::Checked{ configuration.path, {}, {}, findingsOf( configuration ) } );
    for( Bfri::StageMap const& map : stageMapsOf( configuration ) )
        row.push_back( { "stages", Bfri::Value( rowOf( map, {} ) ) } );
    std::vector<Bfri::Page> pages;
    for( auto const& table : configuration.parser().bfTables() )
        pages.push_back( pageOf( configuration, table.name ) );
    row.push_back( { "pages", Bfri::Value( rowOf( std::move( pages ) ) ) } );
    Bfri::JsonAnswer( out ).members( row );
    return out.str();
}

class TwoConfigurations : public InFolder {
  protected:
    ConfigurationPtr first = modelOf( completeContext() );
    ConfigurationPtr second = modelOf( referringContext() );
};

TEST_F( TwoConfigurations, TellTheirOwnInAnyOrder ) {
    String const firstAlone = toldBy( *modelOf( completeContext() ) );
    String const secondAlone = toldBy( *modelOf( referringContext() ) );
    ASSERT_NE( firstAlone, secondAlone );
    EXPECT_EQ( toldBy( *second ), secondAlone );
    EXPECT_EQ( toldBy( *first ), firstAlone );
    EXPECT_EQ( toldBy( *second ), secondAlone );
}

TEST_F( TwoConfigurations, TellTheirOwnFromTwoThreads ) {
    String const ofFirst = toldBy( *first ), ofSecond = toldBy( *second );
    int alike[ 2 ] = {};
    auto const ask = [ & ]( int& count ) {
        for( int i = 0; i < 20; ++i )
            count += toldBy( *first ) == ofFirst && toldBy( *second ) == ofSecond;
    };
    std::thread one( [ & ] { ask( alike[ 0 ] ); } );
    std::thread other( [ & ] { ask( alike[ 1 ] ); } );
    one.join();
    other.join();
    EXPECT_THAT( alike, testing::ElementsAre( 20, 20 ) );
}

} // namespace
