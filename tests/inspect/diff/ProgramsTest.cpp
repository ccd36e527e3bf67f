#include "tests/inspect/diff/Compared.h"

#include <gmock/gmock.h>

namespace {

using Support::ContextBuilder;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Is = Bfri::PipeComparison::Is;

/// A context file and its pipes.
struct OnPipes {
    char const* file;
    std::initializer_list<std::uint32_t> pipes;
};

/// Two programs, "a.json" and "b.json", and changed ones, on the pipes of switches.
class SwitchPrograms : public InFolder, public testing::WithParamInterface<bool> {
  protected:
    SwitchPrograms() {
        writeFile( "a.json", program( { "a.one", "a.two" } ).text() );
        writeFile( "b.json", program( { "b.one", "b.two", "b.three" } ).text() );
        writeFile( "a2.json", program( { "a.one", "a.two" } ).with( "/parser", "1" ).text() );
    }
    static ContextBuilder program( std::initializer_list<char const*> names ) {
        ContextBuilder context;
        U32 handle = 1;
        for( char const* const name : names ) {
            context.table( Support::matchTable( name ).handle( handle ).size( 100 * handle ) );
            ++handle;
        }
        return context;
    }
    static void write( char const* conf, std::initializer_list<OnPipes> programs ) {
        Support::DeviceBuilder device;
        if( GetParam() )
            device.runtimeConfig( "bfrt.json" );
        for( OnPipes const& one : programs )
            device.pipeline( one.file, one.pipes );
        writeFile( conf, Support::SwitchConfBuilder().device( device ).text() );
    }
    static Bfri::Comparison diff( std::initializer_list<OnPipes> old, std::initializer_list<OnPipes> now ) {
        write( "old.conf", old );
        write( "new.conf", now );
        return compare( loadedWithDigests( "old.conf" ), loadedWithDigests( "new.conf" ) );
    }
    static std::vector<Is> changesOf( Bfri::Comparison const& comparison ) {
        std::vector<Is> changes;
        for( Bfri::PipeComparison const& pipe : comparison.pipes )
            changes.push_back( pipe.is );
        return changes;
    }
};

INSTANTIATE_TEST_SUITE_P( RuntimeConfig, SwitchPrograms, testing::Bool() );

TEST_P( SwitchPrograms, ThatExchangePipesAreReplaced ) {
    auto const comparison =
        diff( { { "a.json", { 0 } }, { "b.json", { 1 } } }, { { "b.json", { 0 } }, { "a.json", { 1 } } } );
    EXPECT_THAT( changesOf( comparison ), ElementsAre( Is::replaced, Is::replaced ) );
    EXPECT_EQ( comparison.pipes[ 1 ].from, "b.json" );
    EXPECT_EQ( comparison.pipes[ 1 ].to, "a.json" );
    auto const verdict = verdictOf( comparison );
    EXPECT_FALSE( verdict.byName );
    EXPECT_FALSE( verdict.byHandle );
    EXPECT_THAT( noticesIn( verdict ), Contains( "BD109 pipe 0" ) );
    EXPECT_THAT( noticesIn( verdict ), Contains( "BD101 table a.one" ) );
}

TEST_P( SwitchPrograms, ThatReplaceOthersMayBeEdited ) {
    auto const comparison =
        diff( { { "a.json", { 0 } }, { "b.json", { 1 } } }, { { "a.json", { 0 } }, { "a2.json", { 1 } } } );
    EXPECT_THAT( changesOf( comparison ), ElementsAre( Is::replaced ) );
    EXPECT_EQ( comparison.pipes[ 0 ].pipe, 1U );
}

TEST_P( SwitchPrograms, ThatStayAreEdited ) {
    auto const comparison =
        diff( { { "a.json", { 0 } }, { "b.json", { 1 } } }, { { "a2.json", { 0 } }, { "b.json", { 1 } } } );
    EXPECT_THAT( changesOf( comparison ), ElementsAre( Is::edited ) );
    EXPECT_TRUE( verdictOf( comparison ).byName );
    EXPECT_THAT( noticesIn( verdictOf( comparison ) ), ElementsAre( "BD308 member parser" ) );
}

TEST_P( SwitchPrograms, ThatGoAreMissing ) {
    auto const comparison = diff( { { "a.json", { 0 } }, { "b.json", { 1, 2 } } }, { { "a.json", { 0 } } } );
    EXPECT_THAT( changesOf( comparison ), ElementsAre( Is::removed, Is::removed ) );
    auto const notices = noticesIn( verdictOf( comparison ) );
    EXPECT_THAT( notices, Contains( "BD110 pipe 2" ) );
    EXPECT_THAT( notices, Contains( "BD101 table b.three" ) );
    EXPECT_THAT( notices, Not( Contains( "BD101 table a.one" ) ) );
}

TEST_P( SwitchPrograms, ThatComeAreNoHarm ) {
    auto const comparison = diff( { { "a.json", { 0 } } }, { { "a.json", { 0 } }, { "b.json", { 1 } } } );
    EXPECT_THAT( changesOf( comparison ), ElementsAre( Is::added ) );
    EXPECT_TRUE( verdictOf( comparison ).byName );
    EXPECT_TRUE( verdictOf( comparison ).byHandle );
}

TEST_P( SwitchPrograms, InAnotherOrderAreTheSame ) {
    auto const comparison = diff( { { "a.json", { 0, 1 } }, { "b.json", { 2 } } },
                                  { { "b.json", { 2 } }, { "a.json", { 1, 0 } } } );
    EXPECT_FALSE( comparison.differs() );
    EXPECT_THAT( verdictOf( comparison ).notices, IsEmpty() );
}

TEST_P( SwitchPrograms, OfTheSameNamesAreToldApart ) {
    writeFile( "c.json", program( { "a.one" } ).text() );
    writeFile( "c2.json", program( { "a.one" } ).with( "/tables/0/size", "7" ).text() );
    auto const comparison =
        diff( { { "a.json", { 0 } }, { "c.json", { 1 } } }, { { "a.json", { 0 } }, { "c2.json", { 1 } } } );
    auto const& tables = comparison.kinds.at( 0 );
    ASSERT_EQ( tables.changed.size(), 1U );
    auto const& pipes = Bfri::valueAs<Bfri::List>( tables.changed[ 0 ].row, "pipes" );
    ASSERT_EQ( pipes.size(), 1U );
    EXPECT_EQ( std::get<U32>( pipes[ 0 ].is ), 1U );
    EXPECT_EQ( tables.same, 2U );
}

TEST_P( SwitchPrograms, MayServeMorePipesThanBefore ) {
    auto const comparison = diff( { { "a.json", { 0 } }, { "b.json", { 1, 2 } } },
                                  { { "a.json", { 0, 1 } }, { "b.json", { 2 } } } );
    EXPECT_THAT( changesOf( comparison ), ElementsAre( Is::replaced ) );
    for( Bfri::Row const& row : comparison.kinds.at( 0 ).removed )
        EXPECT_EQ( std::get<U32>( Bfri::valueAs<Bfri::List>( row, "pipes" ).at( 0 ).is ), 1U );
    EXPECT_EQ( comparison.kinds.at( 0 ).removed.size(), 3U );
    EXPECT_EQ( comparison.kinds.at( 0 ).added.size(), 2U );
}

} // namespace
