#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/RecordKinds.h"

#include <atomic>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>
#include <vector>

// Several models in one process: many threads ask, while another reads files.

namespace BfResourceInfo {
namespace {

using namespace Support;

constexpr int readers = 16;
constexpr int replacements = 30;

/// Atomic counting while it lives.
class AtomicCounting {
  public:
    AtomicCounting() { Zel::pointerModeIs( Zel::PointerMode::atomic ); }
    AtomicCounting( AtomicCounting const& ) = delete;
    AtomicCounting& operator=( AtomicCounting const& ) = delete;
    ~AtomicCounting() { Zel::pointerModeIs( Zel::PointerMode::plain ); }
};

/// A context file with something for every query. Two of them share all names but the first, and differ in
/// what a number can say.
ContextBuilder context( U32 number ) {
    return ContextBuilder()
        .table( matchTable( "table." + std::to_string( number ) ) )
        .table( matchTable( "acl" )
                    .stages( { StageTable().size( 100 * number ) } )
                    .actionData( "acl_data" )
                    .statistics( "acl_counter" )
                    .meter( "acl_meter" ) )
        .table( actionDataTable( "acl_data" ).size( 10 * number ) )
        .table( statisticsTable( "acl_counter" ).size( number ) )
        .table( meterTable( "acl_meter" ) )
        .table( wredTable( "wred" ) )
        .table( statefulTable( "register" ) )
        .learnQuanta( "digest" )
        .phvStage( "hdr.eth", number )
        .flexibleHeader( "eth", 8 * number )
        .dynamicHash( "hash", { "a", "b" } );
}

template<class Kind>
void askKind( std::ostream& os, BfResourceInfoIntf const& info ) {
    for( U32 i = 0; i < std::invoke( Kind::num, info ); ++i ) {
        auto const record = std::invoke( Kind::record, info, i );
        os << Kind::operation << ' ' << std::invoke( Kind::index, info, record.name );
        std::apply( [ & ]( auto... field ) { ( ( os << ' ' << record.*field ), ... ); },
                    fields<typename Kind::Record> );
        for( U32 id = 0; id < std::tuple_size_v<decltype( identified<Kind> )>; ++id )
            if constexpr( fieldQuery<Kind> != nullptr )
                os << ' '
                   << std::invoke( fieldQuery<Kind>, info, record.name, static_cast<Identifier<Kind>>( id ) );
        os << '\n';
    }
}

void askTables( std::ostream& os, BfResourceInfoIntf const& info ) {
    os << info.bfTablesHitBitSmashSize() << '\n';
    for( U32 i = 0; i < info.bfTablesNum(); ++i ) {
        String const name = info.bfTableName( i );
        os << name << ' ' << info.bfTableByHandle( info.bfTable( i ).handle ).name << ' '
           << info.bfTableString( name, tableAdtName ) << info.bfTableString( name, tableSelName )
           << info.bfTableString( name, tableLogicalPipe ) << '\n';
    }
}

void askOthers( std::ostream& os, BfResourceInfoIntf& info ) {
    for( U32 i = 0; i < info.bfResourcesNum(); ++i ) {
        BfResource const resource = info.bfResource( i );
        os << info.bfResourceByHandle( resource.handle ).name << ' '
           << info.bfResourceStageStart( resource.name ) << '\n';
    }
    os << info.bfAssociatedTable( "acl_counter" ) << ' ' << info.bfAssociatedTable( "acl_meter" ) << ' '
       << info.bfHeaderSize( "eth" ) << ' ' << info.bfDynHashTableHdl( "hash" ) << ' '
       << info.bfDynHashFieldListHdl( "hash" ) << ' ' << info.bfDynHashFieldCount( "hash" ) << ' '
       << info.bfDynHashFieldId( "hash", "b" ) << ' ' << info.bfTableIndex( "absent" ) << '\n';
}

/// The answers to all queries, about everything that there is.
String answersOf( BfResourceInfoIntf& info ) {
    std::ostringstream os;
    askKind<Resources>( os, info );
    askKind<Tables>( os, info );
    askKind<Counters>( os, info );
    askKind<Meters>( os, info );
    askKind<Wreds>( os, info );
    askKind<Registers>( os, info );
    askKind<LearnQuantas>( os, info );
    askKind<Actions>( os, info );
    askTables( os, info );
    askOthers( os, info );
    return os.str();
}

/// A configuration whose handles carry a pipe of its own, and what is answered of it when nothing else is
/// read.
struct Configuration {
    explicit Configuration( U32 number ) {
        folder.write( "context.json", context( number ).text() );
        path = folder.conf(
            DeviceBuilder().runtimeConfig( "bfrt.json" ).pipeline( "context.json", { number } ) );
        answers = answersOf( *bfResourceInfoIntfFactory( path ) );
    }

    SwitchFolder folder;
    String path;
    String answers;
};

TEST( TwoModelsThreads, ConfigurationsDifferInTheAnswersOfEveryLine ) {
    std::istringstream one( Configuration( 1 ).answers );
    std::istringstream two( Configuration( 2 ).answers );
    String lineOfOne;
    String lineOfTwo;
    int lines = 0;
    int different = 0;
    for( ; std::getline( one, lineOfOne ) && std::getline( two, lineOfTwo ); ++lines )
        different += lineOfOne != lineOfTwo;
    EXPECT_GT( lines, 20 );
    EXPECT_GT( different, 10 );
}

TEST( TwoModelsThreads, SixteenReadersOfTwoModelsAreRightWhileAThirdIsReplaced ) {
    AtomicCounting const scope;
    Configuration const configurations[] = { Configuration( 1 ), Configuration( 2 ) };
    Zel::Ptr<BfResourceInfoIntf> const asked[] = { bfResourceInfoIntfFactory( configurations[ 0 ].path ),
                                                   bfResourceInfoIntfFactory( configurations[ 1 ].path ) };
    auto const replaced = bfResourceInfoIntfFactory( configurations[ 1 ].path );
    std::atomic<bool> done = false;
    std::atomic<int> started = 0;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for( int reader = 0; reader < readers; ++reader )
        threads.emplace_back( [ &, own = reader % 2 ] {
            ++started;
            do
                wrong += answersOf( *asked[ own ] ) != configurations[ own ].answers;
            while( !done );
        } );
    while( started < readers )
        std::this_thread::yield();
    for( int i = 0; i < replacements; ++i ) {
        replaced->parserIs( configurations[ i % 2 ].path );
        wrong += answersOf( *replaced ) != configurations[ i % 2 ].answers;
    }
    done = true;
    for( std::thread& thread : threads )
        thread.join();
    EXPECT_EQ( wrong, 0 );
    EXPECT_EQ( asked[ 0 ]->parser()->references(), 1 );
    EXPECT_EQ( asked[ 1 ]->parser()->references(), 1 );
}

} // namespace
} // namespace BfResourceInfo
