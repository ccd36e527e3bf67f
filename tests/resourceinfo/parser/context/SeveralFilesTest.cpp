#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

// What the context files of one switch share, and what each has for itself. Files are read in the order of
// their pipes.

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::handleOf;
using Support::matchTable;
using Support::statisticsTable;
using testing::ElementsAre;

enum class Runtime { without, with };

class SeveralFiles : public testing::Test {
  protected:
    /// Writes the files "0.json", "1.json", ... for the pipes of that number, and loads them.
    Zel::Ptr<BfResourceParser> load( std::vector<ContextBuilder> const& contexts, Runtime runtime ) const {
        Support::DeviceBuilder device;
        if( runtime == Runtime::with )
            device.runtimeConfig( "bfrt.json" );
        for( U32 pipe = 0; pipe < contexts.size(); ++pipe ) {
            String const name = std::to_string( pipe ) + ".json";
            folder_.write( name, contexts[ pipe ].text() );
            device.pipeline( name, { pipe } );
        }
        return bfResourceParserFactory( folder_.conf( device ) );
    }
    Zel::AssertionFailure failureOfLoading( std::vector<ContextBuilder> const& contexts,
                                            Runtime runtime ) const {
        return Support::failureOf( [ & ] { load( contexts, runtime ); } );
    }

    SwitchFolder folder_;
};

/// Names, each of which starts with a number of its file.
String in( std::size_t file, char const* name ) { return std::to_string( file ) + name; }

/// A file with a record of every kind, whose names are of that file and whose handles are of every file.
ContextBuilder everyKind( std::size_t file ) {
    auto const acl = matchTable( in( file, "acl" ) )
                         .handle( 1 )
                         .actionData( "adt" )
                         .with( "/action_data_table_refs/0/handle", "2" )
                         .selection( "sel" )
                         .with( "/selection_table_refs/0/handle", "3" )
                         .statistics( "c" )
                         .with( "/statistics_table_refs/0/handle", "4" )
                         .meter( "m" )
                         .with( "/meter_table_refs/0/handle", "5" )
                         .meter( "w" )
                         .with( "/meter_table_refs/1/handle", "6" )
                         .stateful( "r" )
                         .with( "/stateful_table_refs/0/handle", "7" )
                         .with( "/actions/0/handle", "8" );
    return ContextBuilder()
        .table( acl )
        .table( Support::actionDataTable( in( file, "adt" ) ).handle( 2 ) )
        .table( Support::selectionTable( in( file, "sel" ) ).handle( 3 ) )
        .table( statisticsTable( in( file, "c" ) ).handle( 4 ).referenced( "direct" ) )
        .table( Support::meterTable( in( file, "m" ) ).handle( 5 ).referenced( "direct" ) )
        .table( Support::wredTable( in( file, "w" ) ).handle( 6 ).referenced( "direct" ) )
        .table( Support::statefulTable( in( file, "r" ) ).handle( 7 ).referenced( "direct" ) )
        .table( statisticsTable( in( file, "own c" ) ).handle( 9 ) )
        .table( Support::meterTable( in( file, "own m" ) ).handle( 10 ) )
        .table( Support::wredTable( in( file, "own w" ) ).handle( 11 ) )
        .table( Support::statefulTable( in( file, "own r" ) ).handle( 12 ) )
        .learnQuanta( in( file, "lq" ) )
        .with( "/learn_quanta/0/handle", "13" )
        .dynamicHash( in( file, "hash" ), { "a" } )
        .with( "/dynamic_hash_calculations/0/handle", "14" )
        .with( "/dynamic_hash_calculations/0/field_lists/0/handle", "15" );
}

template<class Record>
void addHandles( std::vector<U32>& handles, RecordSequence<Record> const& records, std::size_t file ) {
    for( Record const& record : records ) {
        if( record.name.starts_with( std::to_string( file ) ) )
            handles.push_back( record.handle );
    }
}

/// The handles of one file's records, in the order of the fields and records.
std::vector<U32> handlesOf( BfResourceParser const& parser, std::size_t file ) {
    std::vector<U32> handles;
    addHandles( handles, parser.bfResources(), file );
    addHandles( handles, parser.bfTables(), file );
    BfTableInfo const table = parser.bfTables().at( static_cast<U32>( file ) );
    handles.insert( handles.end(), { table.adtHandle, table.selHandle } );
    addHandles( handles, parser.bfCounters(), file );
    for( BfTableCounterInfo const& counter : parser.bfCounters() ) {
        if( counter.name.starts_with( std::to_string( file ) ) )
            handles.push_back( counter.ownHandle );
    }
    addHandles( handles, parser.bfMeters(), file );
    addHandles( handles, parser.bfWreds(), file );
    addHandles( handles, parser.bfRegisterInfos(), file );
    addHandles( handles, parser.bfLearnQuantaInfos(), file );
    handles.push_back( parser.bfActions().at( static_cast<U32>( file ) ).handle );
    BfDynamicHashInfo const hash = parser.bfDynamicHashInfo( in( file, "hash" ) );
    handles.insert( handles.end(), { hash.tableHdl, hash.fieldListHdl } );
    return handles;
}

std::vector<U32> const handlesAsWritten{ 1,  2,  3,  4,  5, 6,  7, 9, 10, 11, 12, // resources
                                         1,  2,  3,                               // table
                                         1,  9,  4,  9,                           // counters
                                         1,  10, 1,  11, 1, 12,                   // meters, wreds, registers
                                         13, 8,  14, 15 };

TEST_F( SeveralFiles, EveryHandleCarriesTheLowestPipeOfItsFileWithARuntimeConfiguration ) {
    auto const parser = load( { everyKind( 0 ), everyKind( 1 ), everyKind( 2 ) }, Runtime::with );
    for( std::size_t file = 0; file < 3; ++file ) {
        auto expected = handlesAsWritten;
        for( U32& handle : expected )
            handle |= static_cast<U32>( file ) << 28;
        EXPECT_EQ( handlesOf( *parser, file ), expected ) << file;
    }
    EXPECT_EQ( parser->resourceHandles().size(), 33 );
}

TEST_F( SeveralFiles, EveryHandleIsAsWrittenWithoutARuntimeConfiguration ) {
    auto const parser = load( { everyKind( 0 ), everyKind( 1 ), everyKind( 2 ) }, Runtime::without );
    for( std::size_t file = 0; file < 3; ++file )
        EXPECT_EQ( handlesOf( *parser, file ), handlesAsWritten ) << file;
    EXPECT_EQ( parser->resourceHandles().size(), 11 );
    EXPECT_EQ( parser->resourceHandles( 1 ).name, "2acl" ) << "of one handle the last";
}

TEST_F( SeveralFiles, LowestPipeOfAPipelineWithSeveralCounts ) {
    folder_.write( "context.json", everyKind( 0 ).text() );
    auto const parser = bfResourceParserFactory( folder_.conf(
        Support::DeviceBuilder().runtimeConfig( "bfrt.json" ).pipeline( "context.json", { 3, 2 } ) ) );
    auto expected = handlesAsWritten;
    for( U32& handle : expected )
        handle |= 0x20000000;
    EXPECT_EQ( handlesOf( *parser, 0 ), expected );
}

class WithAndWithoutRuntime : public SeveralFiles, public testing::WithParamInterface<Runtime> {
  protected:
    Zel::Ptr<BfResourceParser> load( std::vector<ContextBuilder> const& contexts ) const {
        return SeveralFiles::load( contexts, GetParam() );
    }
    /// A handle of the pipeline of that number.
    static U32 inPipe( U32 pipe, U32 handle ) {
        return GetParam() == Runtime::with ? pipe << 28 | handle : handle;
    }
};

template<class Record>
std::vector<String> namesOf( RecordSequence<Record> const& records ) {
    std::vector<String> names;
    for( Record const& record : records )
        names.push_back( record.name );
    return names;
}

TEST_P( WithAndWithoutRuntime, RecordsFollowThoseOfTheFileBefore ) {
    auto const parser = load( { everyKind( 0 ), everyKind( 1 ), everyKind( 2 ) } );
    EXPECT_THAT( namesOf( parser->bfTables() ), ElementsAre( "0acl", "1acl", "2acl" ) );
    EXPECT_THAT( namesOf( parser->bfCounters() ),
                 ElementsAre( "0c", "0own c", "1c", "1own c", "2c", "2own c" ) );
    EXPECT_THAT( namesOf( parser->bfMeters() ),
                 ElementsAre( "0m", "0own m", "1m", "1own m", "2m", "2own m" ) );
    EXPECT_THAT( namesOf( parser->bfWreds() ),
                 ElementsAre( "0w", "0own w", "1w", "1own w", "2w", "2own w" ) );
    EXPECT_THAT( namesOf( parser->bfRegisterInfos() ),
                 ElementsAre( "0r", "0own r", "1r", "1own r", "2r", "2own r" ) );
    EXPECT_THAT( namesOf( parser->bfLearnQuantaInfos() ), ElementsAre( "0lq", "1lq", "2lq" ) );
    EXPECT_EQ( parser->bfResources().size(), 33 );
    EXPECT_EQ( parser->bfResources().at( 11 ).name, "1acl" );
    ASSERT_EQ( parser->bfActions().size(), 3 );
    EXPECT_EQ( parser->bfActions().at( 2 ).tableName, "2acl" );
    EXPECT_EQ( parser->bfDynamicHashInfo().size(), 3 );
}

TEST_P( WithAndWithoutRuntime, HitBitsOfAFileFollowThoseOfTheFilesBefore ) {
    auto const idle = []( char const* name, U32 size ) {
        return ContextBuilder()
            .table( matchTable( "without" ) )
            .table( matchTable( name ).size( size ).idleTime( 3 ) );
    };
    auto const parser = load( { idle( "a", 1000 ), idle( "b", 31 ), idle( "c", 64 ) } );
    std::vector<std::pair<U32, U32>> ranges;
    for( BfTableInfo const& table : parser->bfTables() ) {
        if( table.hitBitSupported )
            ranges.emplace_back( table.hitBitSmashOffset, table.hitBitSmashLast );
    }
    EXPECT_THAT( ranges, ElementsAre( std::pair( 0, 32 ), std::pair( 33, 34 ), std::pair( 35, 38 ) ) );
    EXPECT_EQ( parser->hitBitSmashEntries(), 39 );
}

TEST_P( WithAndWithoutRuntime, HeadersAreShared ) {
    auto const parser =
        load( { ContextBuilder().flexibleHeader( "eth", 112 ), ContextBuilder().flexibleHeader( "ipv6", 320 ),
                ContextBuilder().flexibleHeader( "eth", 112 ).flexibleHeader( "vlan", 32 ) } );
    EXPECT_EQ( parser->bfHeaders().size(), 3 );
    EXPECT_EQ( parser->bfHeaders( "eth" ).size(), 14 );
    EXPECT_EQ( parser->bfHeaders( "ipv6" ).size(), 40 );
    EXPECT_EQ( parser->bfHeaders( "vlan" ).size(), 4 );
}

TEST_P( WithAndWithoutRuntime, HeaderOfAnotherSizeInAnyLaterFileIsFatal ) {
    for( U32 const stored : { 112U, 0U } ) {
        auto const failure = failureOfLoading(
            { ContextBuilder().flexibleHeader( "eth", stored ), ContextBuilder().flexibleHeader( "vlan", 32 ),
              ContextBuilder().flexibleHeader( "vlan", 32 ).flexibleHeader( "eth", 120 ) },
            GetParam() );
        EXPECT_EQ( failure.condition, "parser->bfHeaders( hdrName ) == header" );
        EXPECT_THAT( failure.position, testing::StartsWith( "context file " + folder_.path( "2.json" ) ) );
    }
}

TEST_P( WithAndWithoutRuntime, HashOfALaterFileReplacesTheEarlierOfItsName ) {
    auto const hash = []( char const* handle, std::initializer_list<std::string_view> fields ) {
        return ContextBuilder()
            .dynamicHash( "lag", fields )
            .with( "/dynamic_hash_calculations/0/handle", handle );
    };
    auto const parser = load( { hash( "7", { "a", "b", "c" } ).dynamicHash( "first", { "z" } ),
                                hash( "8", { "d", "e" } ), hash( "9", { "f" } ) } );
    EXPECT_EQ( parser->bfDynamicHashInfo().size(), 2 );
    BfDynamicHashInfo const lag = parser->bfDynamicHashInfo( "lag" );
    EXPECT_EQ( lag.tableHdl, inPipe( 2, 9 ) );
    EXPECT_EQ( lag.fieldListHdl, inPipe( 2, 1 ) );
    EXPECT_EQ( lag.fieldCount, 1 );
    EXPECT_THAT( lag.fieldNames, ElementsAre( "f" ) );
    EXPECT_THAT( parser->bfDynamicHashInfo( "first" ).fieldNames, ElementsAre( "z" ) );
}

TEST_P( WithAndWithoutRuntime, LargestPhvContainersOfAllFilesAreKept ) {
    auto const phv = []( U32 up, U32 down, U32 between ) {
        return ContextBuilder().phvStage( "up", up ).phvStage( "down", down ).phvStage( "between", between );
    };
    auto const parser =
        load( { phv( 1, 8, 3 ), phv( 2, 4, 9 ).phvStage( "only here", 5 ), phv( 7, 32, 4 ) } );
    auto const& in = parser->ingressPhvContainers();
    auto const& out = parser->egressPhvContainers();
    for( auto const& [ field, bytes ] : { std::pair( "up", 7 ), std::pair( "down", 8 ),
                                          std::pair( "between", 9 ), std::pair( "only here", 5 ) } ) {
        EXPECT_EQ( in.value( field ), bytes ) << field;
        EXPECT_EQ( out.value( field ), bytes ) << field;
    }
    EXPECT_EQ( in.size(), 4 );
    EXPECT_EQ( out.size(), 4 );
}

TEST_P( WithAndWithoutRuntime, WidthsOfAFieldMayDifferFromFileToFile ) {
    EXPECT_NO_THROW( load( { ContextBuilder().phvStage( "f", 2 ), ContextBuilder().phvStage( "f", 4 ) } ) );
}

/// A file with an indirect counter "c" that an action of this table names.
ContextBuilder countedBy( char const* table ) {
    return ContextBuilder()
        .table( matchTable( table ).action( "count", { "c" } ) )
        .table( statisticsTable( "c" ) );
}

std::vector<String> ownersOf( RecordSequence<BfTableCounterInfo> const& counters ) {
    std::vector<String> owners;
    for( BfTableCounterInfo const& counter : counters )
        owners.push_back( counter.associatedTable );
    return owners;
}

TEST_P( WithAndWithoutRuntime, ParentIsLostFromTheFileOnThatNamesAnother ) {
    auto const parser = load( { countedBy( "acl" ), countedBy( "nat" ), countedBy( "acl" ) } );
    EXPECT_THAT( ownersOf( parser->bfCounters() ), ElementsAre( "acl", "", "" ) );
    EXPECT_TRUE( parser->multipleParentTablesHas( "c" ) );
    EXPECT_FALSE( parser->parentTableHas( "c" ) );
}

TEST_P( WithAndWithoutRuntime, ParentOfTheSameNameInEveryFileIsKept ) {
    auto const parser = load( { countedBy( "acl" ), countedBy( "acl" ), countedBy( "acl" ) } );
    EXPECT_THAT( ownersOf( parser->bfCounters() ), ElementsAre( "acl", "acl", "acl" ) );
}

TEST_P( WithAndWithoutRuntime, ParentOfAnEarlierFileIsFoundInALaterOne ) {
    auto const counterOnly =
        ContextBuilder().table( statisticsTable( "c" ) ).table( Support::meterTable( "m" ) );
    auto const owner = ContextBuilder().table( matchTable( "acl" ).action( "a", { "c", "m" } ) );
    auto const parser = load( { counterOnly, owner, counterOnly } );
    EXPECT_THAT( ownersOf( parser->bfCounters() ), ElementsAre( "", "acl" ) );
    ASSERT_EQ( parser->bfMeters().size(), 2 );
    EXPECT_EQ( parser->bfMeters().at( 0 ).associatedTable, "" );
    EXPECT_EQ( parser->bfMeters().at( 1 ).associatedTable, "acl" );
}

TEST_P( WithAndWithoutRuntime, ResourceOnceOfSeveralTablesHasNoParentInAnyLaterFile ) {
    auto const several = countedBy( "acl" ).table( matchTable( "nat" ).action( "count", { "c" } ) );
    auto const parser = load( { several, countedBy( "acl" ), countedBy( "third" ) } );
    EXPECT_THAT( ownersOf( parser->bfCounters() ), ElementsAre( "", "", "" ) );
}

INSTANTIATE_TEST_SUITE_P( Runtimes, WithAndWithoutRuntime, testing::Values( Runtime::without, Runtime::with ),
                          []( auto const& row ) { return row.param == Runtime::with ? "With" : "Without"; } );

/// A match table of that handle that lists a counter, a meter and a register, all of handle 9.
Support::Table owner( char const* name, U32 handle ) {
    return matchTable( name )
        .handle( handle )
        .statistics( "x" )
        .with( "/statistics_table_refs/0/handle", "9" )
        .meter( "x" )
        .with( "/meter_table_refs/0/handle", "9" )
        .stateful( "x" )
        .with( "/stateful_table_refs/0/handle", "9" );
}

Support::Table directCounter() { return statisticsTable( "c" ).handle( 9 ).referenced( "direct" ); }

TEST_F( SeveralFiles, DirectTablesMayBelongToATableOfAnEarlierFile ) {
    auto const attached = ContextBuilder()
                              .table( directCounter() )
                              .table( Support::meterTable( "m" ).handle( 9 ).referenced( "direct" ) )
                              .table( Support::wredTable( "w" ).handle( 9 ).referenced( "direct" ) )
                              .table( Support::statefulTable( "r" ).handle( 9 ).referenced( "direct" ) );
    auto const parser =
        load( { ContextBuilder().table( owner( "acl", 5 ) ), ContextBuilder(), attached }, Runtime::without );
    EXPECT_EQ( parser->bfCounters().at( 0 ).handle, 5 );
    EXPECT_EQ( parser->bfCounters().at( 0 ).associatedTable, "acl" );
    EXPECT_EQ( parser->bfMeters().at( 0 ).handle, 5 );
    EXPECT_EQ( parser->bfMeters().at( 0 ).associatedTable, "acl" );
    EXPECT_EQ( parser->bfWreds().at( 0 ).handle, 5 );
    EXPECT_EQ( parser->bfRegisterInfos().at( 0 ).handle, 5 );
}

TEST_F( SeveralFiles, PipeBitsKeepDirectTablesToTheTablesOfTheirFile ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    auto const failure = failureOfLoading(
        { ContextBuilder().table( owner( "acl", 5 ) ), ContextBuilder().table( directCounter() ) },
        Runtime::with );
    EXPECT_EQ( failure.condition, "false && \"Table not found\"" );
    EXPECT_THAT( failure.position, testing::AllOf( testing::HasSubstr( folder_.path( "1.json" ) ),
                                                   testing::EndsWith( ", table 0 \"c\"" ) ) );
    EXPECT_THAT( trace.texts(), ElementsAre( "handle 268435465 not found" ) );
}

TEST_F( SeveralFiles, TableOfALaterFileIsNotYetFound ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    auto const failure = failureOfLoading(
        { ContextBuilder().table( directCounter() ), ContextBuilder().table( owner( "acl", 5 ) ) },
        Runtime::without );
    EXPECT_EQ( failure.condition, "false && \"Table not found\"" );
}

TEST_F( SeveralFiles, OfTablesOfSeveralFilesTheOneOfTheLowestHandleCounts ) {
    auto const file = []( char const* name, U32 handle ) {
        return ContextBuilder().table( owner( name, handle ) ).table( directCounter() );
    };
    auto const without =
        load( { file( "first", 5 ), file( "lower", 3 ), file( "higher", 7 ) }, Runtime::without );
    EXPECT_THAT( ownersOf( without->bfCounters() ), ElementsAre( "first", "lower", "lower" ) );
    EXPECT_EQ( without->bfCounters().at( 2 ).handle, 3 );
    auto const with = load( { file( "first", 5 ), file( "lower", 3 ), file( "higher", 7 ) }, Runtime::with );
    EXPECT_THAT( ownersOf( with->bfCounters() ), ElementsAre( "first", "lower", "higher" ) );
    EXPECT_EQ( with->bfCounters().at( 2 ).handle, 0x20000007 );
}

TEST_F( SeveralFiles, ReferencesOfATableGoWhenALaterFileTakesItsHandle ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    auto const failure = failureOfLoading( { ContextBuilder().table( owner( "acl", 5 ) ),
                                             ContextBuilder().table( matchTable( "nat" ).handle( 5 ) ),
                                             ContextBuilder().table( directCounter() ) },
                                           Runtime::without );
    EXPECT_EQ( failure.condition, "false && \"Table not found\"" );
    EXPECT_THAT( failure.position, testing::HasSubstr( folder_.path( "2.json" ) ) );
}

TEST_F( SeveralFiles, TableThatTookAHandleGivesTheName ) {
    auto const parser = load( { ContextBuilder().table( owner( "acl", 5 ) ).table( directCounter() ),
                                ContextBuilder().table( owner( "nat", 5 ) ).table( directCounter() ) },
                              Runtime::without );
    EXPECT_THAT( ownersOf( parser->bfCounters() ), ElementsAre( "acl", "nat" ) );
}

TEST_F( SeveralFiles, ActionDataAndSelectionOfAnEarlierFileAreFoundUnlessPipeBitsDiffer ) {
    auto const first = ContextBuilder()
                           .table( Support::actionDataTable( "adt" ).size( 64 ) )
                           .table( Support::selectionTable( "sel" ).size( 32 ) );
    auto const second = ContextBuilder().table( matchTable( "acl" ).actionData( "adt" ).selection( "sel" ) );
    BfTableInfo const acl = load( { first, second }, Runtime::without )->bfTables().at( 0 );
    EXPECT_EQ( acl.maxAdtEntries, 64 );
    EXPECT_EQ( acl.maxSelEntries, 32 );
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    EXPECT_EQ( failureOfLoading( { first, second }, Runtime::with ).condition,
               "parser->resourceHandlesHas( adtTblHdl )" );
}

TEST_F( SeveralFiles, LogicalPipeIsThatOfEachFilesName ) {
    String const text = ContextBuilder()
                            .table( statisticsTable( "c" ) )
                            .table( Support::meterTable( "m" ) )
                            .table( Support::wredTable( "w" ) )
                            .text();
    folder_.write( "context_a.json", text );
    folder_.write( "context_b.json", text );
    folder_.write( "context.json", text );
    auto const parser = bfResourceParserFactory( folder_.conf( Support::DeviceBuilder()
                                                                   .pipeline( "context_b.json", { 0 } )
                                                                   .pipeline( "context_a.json", { 1 } )
                                                                   .pipeline( "context.json", { 2, 3 } ) ) );
    std::vector<String> pipes;
    for( U32 i = 0; i < 3; ++i )
        pipes.push_back( parser->bfCounters().at( i ).logicalPipe + parser->bfMeters().at( i ).logicalPipe +
                         parser->bfWreds().at( i ).logicalPipe );
    EXPECT_THAT( pipes, ElementsAre( "bbb", "aaa", "" ) );
}

TEST_F( SeveralFiles, OneFileForTwoPipelinesIsReadTwice ) {
    folder_.write( "context.json", everyKind( 0 ).flexibleHeader( "eth", 112 ).phvStage( "f", 3 ).text() );
    auto const device =
        Support::DeviceBuilder().pipeline( "context.json", { 0, 1 } ).pipeline( "context.json", { 2, 3 } );
    auto const without = bfResourceParserFactory( folder_.conf( device ) );
    EXPECT_EQ( without->bfResources().size(), 22 );
    EXPECT_EQ( without->bfRegisterInfos().size(), 4 );
    EXPECT_EQ( without->bfRegisterInfos().at( 2 ).handle, 1 );
    EXPECT_EQ( without->resourceHandles().size(), 11 );
    EXPECT_EQ( without->bfHeaders().size(), 1 );
    EXPECT_EQ( without->bfDynamicHashInfo().size(), 1 );
    auto const with = bfResourceParserFactory(
        folder_.conf( Support::DeviceBuilder( device ).runtimeConfig( "bfrt.json" ) ) );
    EXPECT_EQ( with->resourceHandles().size(), 22 );
    EXPECT_EQ( with->bfRegisterInfos().at( 2 ).handle, 0x20000001 );
    EXPECT_EQ( with->bfDynamicHashInfo( "0hash" ).tableHdl, 0x2000000E );
}

} // namespace
} // namespace BfResourceInfo
