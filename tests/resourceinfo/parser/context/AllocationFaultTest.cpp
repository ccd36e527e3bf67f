#include "ostler/Ostler.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/resourceinfo/parser/context/Memory.h"
#include "tests/support/TraceCollector.h"

#include <functional>
#include <gtest/gtest.h>
#include <new>
#include <regex>

// Every allocation of a load fails in turn: the caller of the factory gets the exception, nothing stays
// behind, and the next load is as good as any.

namespace BfResourceInfo {
namespace {

/// Something of everything, under names that are too long for a string's own buffer and for the reader's, and
/// a list that is too long for the document's.
String contextOfLongNames() {
    String list = "[0";
    for( int i = 0; i < 100; ++i )
        list += ",0";
    return std::regex_replace( contextOfEveryPass().with( "/fields", std::string_view( list += "]" ) ).text(),
                               std::regex( R"RE(name":")RE" ), "$&" + String( 300, 'n' ) );
}

class AllocationFaults : public testing::Test {
  protected:
    /// Loads while an allocation fails, the one after so many others, which must reach the caller; false
    /// when there are not so many.
    static bool failsBehind( std::size_t others, bool lasting, std::function<void()> const& load ) {
        bool caught = false;
        bool struck = false;
        {
            Memory::Lack const lack( others, lasting );
            try {
                load();
            } catch( std::bad_alloc const& ) {
                caught = true;
            }
            struck = lack.struck();
        }
        EXPECT_TRUE( caught == struck ) << "behind " << others;
        return struck;
    }
    String load() const { return modelText( *bfResourceInfoIntfFactory( conf_ )->parser() ); }

    /// Goes over all allocations of a load, and answers their number.
    std::size_t failEach( bool lasting ) const {
        String const expected = load(); // also makes what is made once in a process
        LiveAllocations const entities = liveAllocations();
        *Ostler::sdkContext() = {};
        std::size_t const blocks = Memory::blocks();
        for( std::size_t others = 0;; ++others ) {
            bool const failed = failsBehind( others, lasting, [ & ] { bfResourceInfoIntfFactory( conf_ ); } );
            EXPECT_TRUE( liveAllocations() == entities ) << "behind " << others;
            *Ostler::sdkContext() = {}; // holds the configuration that was read last
            EXPECT_EQ( Memory::blocks(), blocks ) << "behind " << others;
            if( !failed || others % 16 == 0 ) {
                EXPECT_EQ( load(), expected );
            }
            if( !failed || HasFailure() )
                return others;
        }
    }

    SwitchFolder folder_;
    Support::TraceCollector const quiet_{ "BfResourceParser", {} };
    String const conf_ = folder_.conf( Support::DeviceBuilder()
                                           .runtimeConfig( "bfrt.json" )
                                           .pipeline( "context.json", { 0 } )
                                           .pipeline( "context_b.json", { 1 } ) );

  private:
    void SetUp() override {
        folder_.write( "context.json", contextOfLongNames() );
        folder_.writeGzip( "context_b.json", contextOfLongNames() );
    }
};

TEST_F( AllocationFaults, AnyOneReachesTheCallerAndLeavesNothing ) { EXPECT_GT( failEach( false ), 300 ); }

TEST_F( AllocationFaults, LastingLackReachesTheCallerAndLeavesNothing ) {
    EXPECT_GT( failEach( true ), 300 );
}

TEST_F( AllocationFaults, FormerParserAnswersWhenANewOneCannotBeMade ) {
    auto const interface = bfResourceInfoIntfFactory( conf_ );
    String const expected = modelText( *interface->parser() );
    String const other = folder_.write( "other.conf", R"({"devices":[{"pipelines":[)"
                                                      R"({"context_file":"context.json","pipes":[3]}]}]})" );
    std::size_t others = 0;
    while( failsBehind( others, true, [ & ] { interface->parserIs( other ); } ) ) {
        ASSERT_EQ( interface->parser()->switchConf(), conf_ );
        if( others % 16 == 0 ) {
            EXPECT_EQ( modelText( *interface->parser() ), expected );
        }
        ++others;
    }
    EXPECT_GT( others, 150 );
    EXPECT_EQ( interface->parser()->switchConf(), other );
}

} // namespace
} // namespace BfResourceInfo
