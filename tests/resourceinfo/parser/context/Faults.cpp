#include "tests/resourceinfo/parser/context/Faults.h"

#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gtest/gtest.h>
#include <ostream>

namespace BfResourceInfo {

namespace {

/// How a step fails: "false" alone would not tell one missing member from another.
struct Outcome {
    String condition;
    U32 line;
    String member;

    friend bool operator==( Outcome const&, Outcome const& ) = default;
    friend std::ostream& operator<<( std::ostream& os, Outcome const& outcome ) {
        return os << outcome.condition << " in line " << outcome.line << ", member \"" << outcome.member
                  << '"';
    }
};

void apply( Support::JsonTree& tree, Fault const& fault ) {
    if( fault.json )
        tree.with( fault.pointer, *fault.json );
    else
        tree.without( fault.pointer );
}

Outcome outcomeOf( Support::JsonTree const& tree, std::function<void( Json )> const& step ) {
    ParsedJson const parsed( tree.text() );
    lastJsonAccess() = {};
    auto const failure = Support::failureOf( [ & ] { step( parsed.json() ); } );
    char const* const member = lastJsonAccess().member;
    return { failure.condition, failure.line, member ? member : "" };
}

std::string describe( Fault const& fault ) {
    return std::string( fault.pointer ) + ( fault.json ? std::string( " is " ) + *fault.json : " is gone" );
}

} // namespace

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
