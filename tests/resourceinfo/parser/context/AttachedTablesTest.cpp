#include "resourceinfo/parser/context/AttachedTables.h"
#include "resourceinfo/parser/context/Preprocess.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::handleOf;
using Support::matchTable;
using Support::meterTable;
using Support::statefulTable;
using Support::statisticsTable;
using Support::Table;
using Support::wredTable;
using testing::ElementsAre;

char const* const notFound = "false && \"Table not found\"";

template<class Record>
Record lastOf( RecordSequence<Record> const& records ) {
    return records.at( records.size() - 1 );
}

class AttachedTables : public testing::Test {
  protected:
    /// Makes the tables known that the attached ones belong to.
    void preprocess( ContextBuilder const& context, U32 handlePipeBits = 0 ) {
        ParsedJson const d( context.text() );
        preprocessContext( parser_.get(), d.json(), { BfPipeMask( 1 ), handlePipeBits } );
    }
    BfTableCounterInfo counter( Table const& table, String const& file = "context.json", U32 bits = 0 ) {
        ParsedJson const json( table.text() );
        EXPECT_EQ( parseBfTableCounterInfo( parser_.get(), json.json(), file, { BfPipeMask( 1 ), bits } ),
                   0 );
        return lastOf( parser_->bfCounters() );
    }
    void parseMeter( Table const& table, String const& file = "context.json", U32 bits = 0 ) {
        ParsedJson const json( table.text() );
        EXPECT_EQ( parseBfTableMeterInfo( parser_.get(), json.json(), file, { BfPipeMask( 1 ), bits } ), 0 );
    }
    BfTableMeterInfo meter( Table const& table, String const& file = "context.json", U32 bits = 0 ) {
        parseMeter( table, file, bits );
        return lastOf( parser_->bfMeters() );
    }
    BfTableWredInfo wred( Table const& table, String const& file = "context.json", U32 bits = 0 ) {
        parseMeter( table, file, bits );
        return lastOf( parser_->bfWreds() );
    }
    BfRegisterInfo reg( Table const& table, U32 bits = 0 ) {
        ParsedJson const json( table.text() );
        EXPECT_EQ( parseBfRegisterInfo( parser_.get(), json.json(), { BfPipeMask( 1 ), bits } ), 0 );
        return lastOf( parser_->bfRegisterInfos() );
    }

    Zel::Ptr<BfResourceParser> parser_ = emptyParser();
};

class Counters : public AttachedTables {};

TEST_F( Counters, DirectOneIsKnownByTheMatchTableThatListsIt ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).handle( 5 ).statistics( "c" ) ) );
    BfTableCounterInfo const c = counter( statisticsTable( "c" ).referenced( "direct" ).size( 512 ) );
    EXPECT_EQ( c.name, "c" );
    EXPECT_EQ( c.handle, 5 );
    EXPECT_EQ( c.ownHandle, handleOf( "c" ) );
    EXPECT_EQ( c.size, 512 );
    EXPECT_TRUE( c.direct );
    EXPECT_TRUE( c.bytes );
    EXPECT_TRUE( c.packets );
    EXPECT_EQ( c.associatedTable, "acl" );
    EXPECT_EQ( c.logicalPipe, "" );
}

TEST_F( Counters, IndirectOneKeepsItsHandleAndBelongsToTheTableWhoseActionsNameIt ) {
    preprocess( ContextBuilder()
                    .table( matchTable( "acl" ).action( "count", { "c" } ) )
                    .table( matchTable( "lists it" ).statistics( "c" ) ) );
    BfTableCounterInfo const c = counter( statisticsTable( "c" ).handle( 9 ) );
    EXPECT_FALSE( c.direct );
    EXPECT_EQ( c.handle, 9 );
    EXPECT_EQ( c.ownHandle, 9 );
    EXPECT_EQ( c.associatedTable, "acl" );
}

TEST_F( Counters, DirectOneDoesNotBelongToTheTableWhoseActionsNameIt ) {
    preprocess( ContextBuilder()
                    .table( matchTable( "names it" ).action( "count", { "c" } ) )
                    .table( matchTable( "acl" ).statistics( "c" ) ) );
    EXPECT_EQ( counter( statisticsTable( "c" ).referenced( "direct" ) ).associatedTable, "acl" );
}

TEST_F( Counters, IndirectOneOfNoneOrSeveralTablesBelongsToNone ) {
    preprocess( ContextBuilder()
                    .table( matchTable( "acl" ).action( "count", { "shared" } ) )
                    .table( matchTable( "nat" ).action( "count", { "shared" } ) ) );
    EXPECT_EQ( counter( statisticsTable( "shared" ) ).associatedTable, "" );
    EXPECT_EQ( counter( statisticsTable( "unnamed" ) ).associatedTable, "" );
}

TEST_F( Counters, AreDirectUnlessIndirect ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).statistics( "c" ) ) );
    for( auto const& [ how, direct ] :
         { std::pair( "direct", true ), std::pair( "indirect", false ), std::pair( "", true ),
           std::pair( "Indirect", true ), std::pair( "indirect ", true ), std::pair( "other", true ) } ) {
        BfTableCounterInfo const c = counter( statisticsTable( "c" ).referenced( how ) );
        EXPECT_EQ( c.direct, direct ) << how;
        EXPECT_EQ( c.handle, handleOf( direct ? "acl" : "c" ) ) << how;
    }
}

TEST_F( Counters, CountWhatTheirTypeSays ) {
    struct Row {
        char const* type;
        bool bytes;
        bool packets;
    };
    for( auto const& [ type, bytes, packets ] :
         { Row{ "\"bytes\"", true, false }, Row{ "\"packets\"", false, true },
           Row{ "\"packets_and_bytes\"", true, true }, Row{ "\"bytes_and_packets\"", false, false },
           Row{ "\"\"", false, false }, Row{ "\"Bytes\"", false, false } } ) {
        BfTableCounterInfo const c = counter( statisticsTable( "c" ).with( "/statistics_type", type ) );
        EXPECT_EQ( c.bytes, bytes ) << type;
        EXPECT_EQ( c.packets, packets ) << type;
    }
}

TEST_F( Counters, ListedByNoTableOrOnlyAsAnotherKindAreTracedAndFatal ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).meter( "c" ).stateful( "c" ) ) );
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    EXPECT_EQ( Support::conditionOf( [ & ] { counter( statisticsTable( "c" ).referenced( "direct" ) ); } ),
               notFound );
    EXPECT_THAT( trace.texts(), ElementsAre( "handle " + std::to_string( handleOf( "c" ) ) + " not found" ) );
    EXPECT_TRUE( parser_->bfCounters().empty() );
}

TEST_F( Counters, AreTracedWithoutASpace ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    counter( statisticsTable( "acl.counter" ) );
    ASSERT_THAT( trace.texts(), ElementsAre( "Parsed counteracl.counter" ) );
    EXPECT_EQ( trace.lines()[ 0 ].level, 7 );
}

class Meters : public AttachedTables {};

TEST_F( Meters, DirectOneIsKnownByTheMatchTableThatListsIt ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).handle( 5 ).meter( "m" ) ) );
    BfTableMeterInfo const m = meter( meterTable( "m" ).referenced( "direct" ) );
    EXPECT_EQ( m.name, "m" );
    EXPECT_EQ( m.handle, 5 );
    EXPECT_TRUE( m.direct );
    EXPECT_FALSE( m.pps );
    EXPECT_FALSE( m.hasPreColor );
    EXPECT_EQ( m.associatedTable, "acl" );
    EXPECT_EQ( m.logicalPipe, "" );
    EXPECT_TRUE( parser_->bfWreds().empty() );
}

TEST_F( Meters, IndirectOneKeepsItsHandleAndBelongsToTheTableWhoseActionsNameIt ) {
    preprocess( ContextBuilder()
                    .table( matchTable( "acl" ).action( "police", { "m" } ) )
                    .table( matchTable( "lists it" ).meter( "m" ) ) );
    BfTableMeterInfo const m = meter( meterTable( "m" ).handle( 9 ) );
    EXPECT_FALSE( m.direct );
    EXPECT_EQ( m.handle, 9 );
    EXPECT_EQ( m.associatedTable, "acl" );
}

TEST_F( Meters, IndirectOneOfNoneOrSeveralTablesBelongsToNone ) {
    preprocess( ContextBuilder()
                    .table( matchTable( "acl" ).action( "police", { "shared" } ) )
                    .table( matchTable( "nat" ).action( "police", { "shared" } ) ) );
    EXPECT_EQ( meter( meterTable( "shared" ) ).associatedTable, "" );
    EXPECT_EQ( meter( meterTable( "unnamed" ) ).associatedTable, "" );
}

TEST_F( Meters, AreDirectOnlyWhenDirect ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).meter( "m" ).action( "a", { "m" } ) ) );
    for( auto const& [ how, direct ] :
         { std::pair( "direct", true ), std::pair( "indirect", false ), std::pair( "", false ),
           std::pair( "Direct", false ), std::pair( "direct ", false ), std::pair( "other", false ) } ) {
        BfTableMeterInfo const m = meter( meterTable( "m" ).referenced( how ) );
        EXPECT_EQ( m.direct, direct ) << how;
        EXPECT_EQ( m.handle, handleOf( direct ? "acl" : "m" ) ) << how;
        BfTableWredInfo const w = wred( wredTable( "m" ).referenced( how ) );
        EXPECT_EQ( w.direct, direct ) << how;
        EXPECT_EQ( w.handle, handleOf( direct ? "acl" : "m" ) ) << how;
    }
}

TEST_F( Meters, CountPacketsWhenTheirGranularityIsPackets ) {
    for( auto const& [ granularity, pps ] :
         { std::pair( "\"packets\"", true ), std::pair( "\"bytes\"", false ),
           std::pair( "\"packets_and_bytes\"", false ), std::pair( "\"\"", false ),
           std::pair( "\"Packets\"", false ) } )
        EXPECT_EQ( meter( meterTable( "m" ).with( "/meter_granularity", granularity ) ).pps, pps )
            << granularity;
}

TEST_F( Meters, PreColorIsThereWhateverItsValue ) {
    for( char const* value : { "null", "false", "\"\"", "\"color\"" } )
        EXPECT_TRUE( meter( meterTable( "m" ).with( "/pre_color_field_name", value ) ).hasPreColor ) << value;
}

TEST_F( Meters, OfTypeRedAreWredsAndNoMeters ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).handle( 5 ).meter( "w" ) ) );
    BfTableWredInfo const direct = wred( wredTable( "w" ).referenced( "direct" ).logicalPipe( "own" ) );
    EXPECT_EQ( direct.name, "w" );
    EXPECT_EQ( direct.handle, 5 );
    EXPECT_TRUE( direct.direct );
    EXPECT_EQ( direct.logicalPipe, "own" );
    BfTableWredInfo const indirect = wred( wredTable( "w" ).handle( 9 ) );
    EXPECT_EQ( indirect.handle, 9 );
    EXPECT_FALSE( indirect.direct );
    EXPECT_EQ( indirect.logicalPipe, "" );
    EXPECT_EQ( parser_->bfWreds().size(), 2 );
    EXPECT_TRUE( parser_->bfMeters().empty() );
}

TEST_F( Meters, OfAnyOtherTypeAreMeters ) {
    for( char const* type : { "\"standard\"", "\"lpf\"", "\"Red\"", "\"red \"", "\"\"" } )
        EXPECT_EQ( meter( meterTable( "m" ).with( "/meter_type", type ) ).name, "m" ) << type;
    EXPECT_EQ( parser_->bfMeters().size(), 5 );
    EXPECT_TRUE( parser_->bfWreds().empty() );
}

TEST_F( Meters, ListedByNoTableOrOnlyAsAnotherKindAreTracedAndFatal ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).statistics( "m" ).stateful( "m" ) ) );
    for( Table const& table : { meterTable( "m" ), wredTable( "m" ) } ) {
        Support::TraceCollector const trace( "BfResourceParser", { 0 } );
        EXPECT_EQ( Support::conditionOf( [ & ] { parseMeter( Table( table ).referenced( "direct" ) ); } ),
                   notFound );
        EXPECT_THAT( trace.texts(),
                     ElementsAre( "handle " + std::to_string( handleOf( "m" ) ) + " not found" ) );
    }
    EXPECT_TRUE( parser_->bfMeters().empty() );
    EXPECT_TRUE( parser_->bfWreds().empty() );
}

TEST_F( Meters, AreTracedByTheirKind ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    meter( meterTable( "acl.meter" ) );
    wred( wredTable( "acl.wred" ) );
    ASSERT_THAT( trace.texts(), ElementsAre( "Parsed meter acl.meter", "Parsed wred acl.wred" ) );
    EXPECT_EQ( trace.lines()[ 0 ].level, 7 );
    EXPECT_EQ( trace.lines()[ 1 ].level, 7 );
}

class Registers : public AttachedTables {};

TEST_F( Registers, DirectOneIsKnownByTheMatchTableThatListsIt ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).handle( 5 ).stateful( "r" ) ) );
    BfRegisterInfo const r = reg( statefulTable( "r" ).referenced( "direct" ).with( "/alu_width", "16" ) );
    EXPECT_EQ( r.name, "r" );
    EXPECT_EQ( r.handle, 5 );
    EXPECT_FALSE( r.indirect );
    EXPECT_EQ( r.dataType, "uint16_t" );
    EXPECT_EQ( r.width, 16 );
    EXPECT_FALSE( r.dualWidth );
}

TEST_F( Registers, IndirectOneKeepsItsHandle ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).stateful( "r" ).action( "a", { "r" } ) ) );
    BfRegisterInfo const r = reg( statefulTable( "r" ).handle( 9 ) );
    EXPECT_TRUE( r.indirect );
    EXPECT_EQ( r.handle, 9 );
}

TEST_F( Registers, AreDirectUnlessIndirect ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).stateful( "r" ) ) );
    for( auto const& [ how, indirect ] :
         { std::pair( "direct", false ), std::pair( "indirect", true ), std::pair( "", false ),
           std::pair( "Indirect", false ), std::pair( "other", false ) } ) {
        BfRegisterInfo const r = reg( statefulTable( "r" ).referenced( how ) );
        EXPECT_EQ( r.indirect, indirect ) << how;
        EXPECT_EQ( r.handle, handleOf( indirect ? "r" : "acl" ) ) << how;
    }
}

TEST_F( Registers, CellTypeFollowsTheWidth ) {
    struct Row {
        U32 width;
        char const* type;
    };
    for( auto const& [ width, type ] :
         { Row{ 0, "uint32_t" }, Row{ 1, "uint8_t" }, Row{ 8, "uint8_t" }, Row{ 9, "uint16_t" },
           Row{ 16, "uint16_t" }, Row{ 17, "uint32_t" }, Row{ 24, "uint32_t" }, Row{ 25, "uint32_t" },
           Row{ 32, "uint32_t" }, Row{ 33, "*uint8" }, Row{ 64, "*uint8" }, Row{ 128, "*uint8" },
           Row{ 0x7FFFFFFF, "*uint8" }, Row{ 0xFFFFFFF8, "*uint8" }, Row{ 0xFFFFFFF9, "*uint8" },
           Row{ 0xFFFFFFFF, "*uint8" } } ) {
        auto const table = statefulTable( "r" ).with( "/alu_width", Support::JsonTree::number( width ) );
        for( Table const& each : { table, Table( table ).without( "/dual_width_mode" ) } ) {
            BfRegisterInfo const r = reg( each );
            EXPECT_EQ( r.dataType, type ) << width;
            EXPECT_EQ( r.width, width );
            EXPECT_FALSE( r.dualWidth ) << width;
        }
    }
}

TEST_F( Registers, DualWidthIsOfTwice32Bits ) {
    BfRegisterInfo const r = reg( statefulTable( "r" ).with( "/dual_width_mode", "true" ) );
    EXPECT_TRUE( r.dualWidth );
    EXPECT_EQ( r.width, 32 );
    EXPECT_EQ( r.dataType, "uint64_t" );
}

TEST_F( Registers, DualWidthOfAnyOtherIsFatal ) {
    for( char const* width : { "0", "8", "16", "31", "33", "64", "4294967295" } ) {
        auto const table = statefulTable( "r" ).with( "/dual_width_mode", "true" );
        EXPECT_EQ( Support::conditionOf( [ & ] { reg( Table( table ).with( "/alu_width", width ) ); } ),
                   "width == 32" )
            << width;
    }
    EXPECT_TRUE( parser_->bfRegisterInfos().empty() );
}

TEST_F( Registers, ListedByNoTableOrOnlyAsAnotherKindAreTracedAndFatal ) {
    preprocess( ContextBuilder().table( matchTable( "acl" ).statistics( "r" ).meter( "r" ) ) );
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    EXPECT_EQ( Support::conditionOf( [ & ] { reg( statefulTable( "r" ).referenced( "direct" ) ); } ),
               notFound );
    EXPECT_THAT( trace.texts(), ElementsAre( "handle " + std::to_string( handleOf( "r" ) ) + " not found" ) );
}

TEST_F( Registers, AreTracedAtLevelSeven ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    reg( statefulTable( "acl.register" ) );
    ASSERT_THAT( trace.texts(), ElementsAre( "Parsed reg info acl.register" ) );
    EXPECT_EQ( trace.lines()[ 0 ].level, 7 );
}

TEST_F( AttachedTables, HandlesCarryThePipeBitsOwnAndOthers ) {
    U32 const bits = 0x30000000;
    preprocess(
        ContextBuilder().table(
            matchTable( "acl" ).handle( 5 ).statistics( "c" ).meter( "m" ).meter( "w" ).stateful( "r" ) ),
        bits );
    BfTableCounterInfo const c = counter( statisticsTable( "c" ).referenced( "direct" ), "", bits );
    EXPECT_EQ( c.handle, bits | 5 );
    EXPECT_EQ( c.ownHandle, bits | handleOf( "c" ) );
    EXPECT_EQ( meter( meterTable( "m" ).referenced( "direct" ), "", bits ).handle, bits | 5 );
    EXPECT_EQ( wred( wredTable( "w" ).referenced( "direct" ), "", bits ).handle, bits | 5 );
    EXPECT_EQ( reg( statefulTable( "r" ).referenced( "direct" ), bits ).handle, bits | 5 );
    EXPECT_EQ( counter( statisticsTable( "x" ).handle( 9 ), "", bits ).handle, bits | 9 );
    EXPECT_EQ( meter( meterTable( "x" ).handle( 9 ), "", bits ).handle, bits | 9 );
    EXPECT_EQ( wred( wredTable( "x" ).handle( 9 ), "", bits ).handle, bits | 9 );
    EXPECT_EQ( reg( statefulTable( "x" ).handle( 9 ), bits ).handle, bits | 9 );
}

TEST_F( AttachedTables, OfSeveralTablesTheOneOfTheLowestHandleCounts ) {
    for( U32 const handle : { 7U, 3U, 5U } )
        preprocess( ContextBuilder().table( matchTable( "t" + std::to_string( handle ) )
                                                .handle( handle )
                                                .statistics( "x" )
                                                .meter( "x" )
                                                .stateful( "x" ) ) );
    BfTableCounterInfo const c = counter( statisticsTable( "x" ).referenced( "direct" ) );
    EXPECT_EQ( c.handle, 3 );
    EXPECT_EQ( c.associatedTable, "t3" );
    BfTableMeterInfo const m = meter( meterTable( "x" ).referenced( "direct" ) );
    EXPECT_EQ( m.handle, 3 );
    EXPECT_EQ( m.associatedTable, "t3" );
    EXPECT_EQ( wred( wredTable( "x" ).referenced( "direct" ) ).handle, 3 );
    EXPECT_EQ( reg( statefulTable( "x" ).referenced( "direct" ) ).handle, 3 );
}

TEST_F( AttachedTables, LogicalPipeIsTheTablesElseTheFiles ) {
    for( auto const& [ file, pipe ] :
         { std::pair( "/x/context_a.json", "a" ), std::pair( "/x/context_b.json", "b" ),
           std::pair( "/x/context.json", "" ) } ) {
        EXPECT_EQ( counter( statisticsTable( "c" ), file ).logicalPipe, pipe );
        EXPECT_EQ( meter( meterTable( "m" ), file ).logicalPipe, pipe );
        EXPECT_EQ( wred( wredTable( "w" ), file ).logicalPipe, pipe );
        EXPECT_EQ( counter( statisticsTable( "c" ).logicalPipe( "own" ), file ).logicalPipe, "own" );
        EXPECT_EQ( meter( meterTable( "m" ).logicalPipe( "own" ), file ).logicalPipe, "own" );
        EXPECT_EQ( wred( wredTable( "w" ).logicalPipe( "own" ), file ).logicalPipe, "own" );
    }
}

TEST_F( AttachedTables, TextsEndAtTheirFirstNul ) {
    char const* const name = R"("x\u0000y")";
    char const* const pipe = R"("a\u0000b")";
    preprocess( ContextBuilder().table( matchTable( "acl" ).action( "a", { "x" } ) ) );
    BfTableCounterInfo const c =
        counter( statisticsTable( "c" ).with( "/name", name ).with( "/logical_pipe", pipe ) );
    EXPECT_EQ( c.name, "x" );
    EXPECT_EQ( c.logicalPipe, "a" );
    EXPECT_EQ( c.associatedTable, "acl" );
    EXPECT_EQ( meter( meterTable( "m" ).with( "/name", name ) ).associatedTable, "acl" );
    EXPECT_EQ( wred( wredTable( "w" ).with( "/name", name ) ).name, "x" );
    EXPECT_EQ( reg( statefulTable( "r" ).with( "/name", name ) ).name, "x" );
}

} // namespace
} // namespace BfResourceInfo
