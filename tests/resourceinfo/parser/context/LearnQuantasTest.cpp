#include "resourceinfo/parser/context/LearnQuantas.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using testing::ElementsAre;

class LearnQuantas : public testing::Test {
  protected:
    void run( ContextBuilder const& context, U32 handlePipeBits = 0 ) {
        ParsedJson const d( context.text() );
        parseLearnQuantas( parser_.get(), d.json(), { BfPipeMask( 1 ), handlePipeBits } );
    }
    std::vector<std::pair<String, U32>> quantas() const {
        std::vector<std::pair<String, U32>> result;
        for( BfLearnQuantaInfo const& lq : parser_->bfLearnQuantaInfos() )
            result.emplace_back( lq.name, lq.handle );
        return result;
    }

    Zel::Ptr<BfResourceParser> parser_ = emptyParser();
};

/// Two learn quantas of known handles.
ContextBuilder twoQuantas() {
    return ContextBuilder()
        .learnQuanta( "second" )
        .with( "/learn_quanta/0/handle", "2" )
        .learnQuanta( "first" )
        .with( "/learn_quanta/1/handle", "1" );
}

TEST_F( LearnQuantas, AreReadInOrder ) {
    run( twoQuantas() );
    EXPECT_THAT( quantas(), ElementsAre( std::pair( "second", 2 ), std::pair( "first", 1 ) ) );
}

TEST_F( LearnQuantas, HandlesCarryThePipeBits ) {
    run( twoQuantas(), 0x10000000 );
    EXPECT_THAT( quantas(),
                 ElementsAre( std::pair( "second", 0x10000002 ), std::pair( "first", 0x10000001 ) ) );
}

TEST_F( LearnQuantas, WithoutAConfigurationTypeArePassedOver ) {
    run( twoQuantas().without( "/learn_quanta/0/lq_cfg_type" ) );
    EXPECT_THAT( quantas(), ElementsAre( std::pair( "first", 1 ) ) );
    run( ContextBuilder().with( "/learn_quanta", R"([ {}, { "name": null, "handle": null } ])" ) );
    EXPECT_EQ( parser_->bfLearnQuantaInfos().size(), 1 );
}

TEST_F( LearnQuantas, StepAnswersWhetherItRecorded ) {
    auto const step = [ & ]( char const* text ) {
        ParsedJson const lq( text );
        return parseBfLearnQuantaInfo( parser_.get(), lq.json(), {} );
    };
    EXPECT_EQ( step( R"({ "name": "macs", "handle": 1 })" ), 1 );
    EXPECT_EQ( step( "{}" ), 1 );
    EXPECT_TRUE( parser_->bfLearnQuantaInfos().empty() );
    EXPECT_EQ( step( R"({ "name": "macs", "handle": 1, "lq_cfg_type": 0 })" ), 0 );
    EXPECT_EQ( parser_->bfLearnQuantaInfos().size(), 1 );
}

TEST_F( LearnQuantas, ConfigurationTypeIsThereWhateverItsValue ) {
    for( char const* value : { "null", "false", "\"\"", "-1", "{}" } )
        run( twoQuantas().without( "/learn_quanta/1" ).with( "/learn_quanta/0/lq_cfg_type", value ) );
    EXPECT_EQ( parser_->bfLearnQuantaInfos().size(), 5 );
}

TEST_F( LearnQuantas, NameEndsAtItsFirstNul ) {
    run( ContextBuilder().learnQuanta( "x" ).with( "/learn_quanta/0/name", R"("digest\u0000x")" ) );
    EXPECT_EQ( parser_->bfLearnQuantaInfos().at( 0 ).name, "digest" );
}

TEST_F( LearnQuantas, AreTracedAtLevelSevenBehindThePass ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    run( twoQuantas().learnQuanta( "other" ).without( "/learn_quanta/2/lq_cfg_type" ) );
    ASSERT_THAT( trace.texts(),
                 ElementsAre( "Parsing learn quantas", "Parsed lq second", "Parsed lq first" ) );
    EXPECT_EQ( trace.lines()[ 0 ].level, 6 );
    EXPECT_EQ( trace.lines()[ 1 ].level, 7 );
}

TEST( LearnQuantaFaults, InTheirOrder ) {
    expectFaults( twoQuantas().tree(),
                  {
                      { "", "null", noObject },
                      { "/learn_quanta", removed, noMember },
                      { "/learn_quanta", "null", "lqs.IsArray()" },
                      { "/learn_quanta", "{}", "lqs.IsArray()" },
                      { "/learn_quanta", "\"digest\"", "lqs.IsArray()" },
                      { "/learn_quanta/0", "null", "lq.IsObject()" },
                      { "/learn_quanta/0", "[]", "lq.IsObject()" },
                      { "/learn_quanta/0", "1", "lq.IsObject()" },
                      { "/learn_quanta/0/name", removed, noMember },
                      { "/learn_quanta/0/name", "null", noString },
                      { "/learn_quanta/0/name", "7", noString },
                      { "/learn_quanta/0/handle", removed, noMember },
                      { "/learn_quanta/0/handle", "null", noUnsigned },
                      { "/learn_quanta/0/handle", "-1", noUnsigned },
                      { "/learn_quanta/0/handle", "4294967296", noUnsigned },
                      { "/learn_quanta/1", "\"\"", "lq.IsObject()" },
                      { "/learn_quanta/1/name", "[]", noString },
                      { "/learn_quanta/1/handle", "1.5", noUnsigned },
                  },
                  []( Json d ) {
                      auto const parser = emptyParser();
                      parseLearnQuantas( parser.get(), d, {} );
                  } );
}

} // namespace
} // namespace BfResourceInfo
