#include "tests/resourceinfo/parser/context/Faults.h"

#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gtest/gtest.h>
#include <ostream>

using namespace Context;

namespace BfResourceInfo {

namespace {

/// How a step fails: "false" alone would not tell one missing member from another.
struct Outcome {
    String condition;
    U32 line;
    String position;

    friend bool operator==( Outcome const&, Outcome const& ) = default;
    friend std::ostream& operator<<( std::ostream& os, Outcome const& outcome ) {
        return os << outcome.condition << " in line " << outcome.line << outcome.position;
    }
};

/// While it lives, failures name the place in the value.
class ValueScope : private Zel::InputScope {
  public:
    explicit ValueScope( ParsedJson const& parsed ) : parsed_( parsed ) { lastJsonAccess() = {}; }

  private:
    void locate( Zel::InputPlace& place ) const override { locateLastAccess( place, parsed_.document() ); }

    ParsedJson const& parsed_;
};

void apply( Support::JsonTree& tree, Fault const& fault ) {
    if( fault.json )
        tree.with( fault.pointer, *fault.json );
    else
        tree.without( fault.pointer );
}

Outcome outcomeOf( Support::JsonTree const& tree, std::function<void( Json )> const& step ) {
    ParsedJson const parsed( tree.text() );
    ValueScope const scope( parsed );
    auto const failure = Support::failureOf( [ & ] { step( parsed.json() ); } );
    return { failure.condition, failure.line, failure.position };
}

std::string describe( Fault const& fault ) {
    return std::string( fault.pointer ) + ( fault.json ? std::string( " is " ) + *fault.json : " is gone" );
}

} // namespace

Support::ContextBuilder contextOfEveryPass() {
    using Support::StageTable;
    return Support::ContextBuilder()
        .table( Support::statisticsTable( "c" ).referenced( "direct" ) )
        .table( Support::matchTable( "acl" )
                    .idleTime( 3 )
                    .actionData( "adt" )
                    .selection( "sel" )
                    .statistics( "c" )
                    .meter( "w" )
                    .stateful( "direct r" )
                    .logicalPipe( "a" )
                    .with( "/static_entries", "[]" )
                    .with( "/action_profile", "\"p\"" )
                    .action( "permit", { "m", "r" } ) )
        .table( Support::meterTable( "m" ).with( "/pre_color_field_name", "\"color\"" ) )
        .table( Support::statefulTable( "r" ) )
        .table( Support::actionDataTable( "adt" ) )
        .table( Support::selectionTable( "sel" ) )
        .table( Support::wredTable( "w" ).referenced( "direct" ).logicalPipe( "b" ) )
        .table(
            Support::statefulTable( "direct r" ).referenced( "direct" ).with( "/dual_width_mode", "true" ) )
        .table( Support::statisticsTable( "indirect c" ) )
        .table( Support::conditionTable( "if" ) )
        .table( Support::matchTable( "lpm" )
                    .matchType( "algorithmic_tcam" )
                    .partitions( 4 )
                    .units( { { StageTable( "algorithmic_tcam_match" ) },
                              { StageTable( "algorithmic_tcam_match" ) } } ) )
        .table( Support::matchTable( "atcam" )
                    .matchType( "algorithmic_lpm" )
                    .controllable( false )
                    .with( "/match_attributes/atcam_table", R"({ "match_attributes": [] })" ) )
        .learnQuanta( "digest" )
        .phvStage( "hdr.eth", 6 )
        .phvStage( "hdr.eth", 2 )
        .flexibleHeader( "eth", 112 )
        .dynamicHash( "lag", { "ip.src", "ip.dst" } );
}

void expectFaults( Support::JsonTree const& good, std::vector<Fault> const& faults,
                   std::function<void( Json )> const& step ) {
    Support::TraceCollector const quiet( "BfResourceParser", { 0 } );
    ASSERT_NO_THROW( step( ParsedJson( good.text() ).json() ) ) << good.text();
    std::vector<Outcome> alone;
    for( Fault const& fault : faults ) {
        SCOPED_TRACE( describe( fault ) );
        Support::JsonTree tree = good;
        apply( tree, fault );
        alone.push_back( outcomeOf( tree, step ) );
        EXPECT_EQ( alone.back().condition, fault.condition );
    }
    for( std::size_t second = 0; second < faults.size(); ++second ) {
        for( std::size_t first = 0; first < second; ++first ) {
            SCOPED_TRACE( describe( faults[ first ] ) + ", then " + describe( faults[ second ] ) );
            Support::JsonTree tree = good;
            apply( tree, faults[ second ] );
            if( !faults[ first ].json && !tree.has( faults[ first ].pointer ) )
                continue; // the later fault is the earlier one and more
            apply( tree, faults[ first ] );
            EXPECT_EQ( outcomeOf( tree, step ), alone[ first ] );
        }
    }
}

} // namespace BfResourceInfo
