#include "tests/resourceinfo/Fixtures.h"
#include "vessa/VectorException.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using testing::ElementsAre;
using Parser = BfResourceParser;

class ParserState : public testing::Test {
  protected:
    template<class Map>
    static auto keysOf( Map const& map ) {
        std::vector<typename Map::Key> keys;
        for( auto const& entry : map )
            keys.push_back( entry.key() );
        return keys;
    }

    Zel::Ptr<Parser> parser_ = emptyParser();
};

/// The operations of one sequence.
template<class Record>
struct SequenceOperations {
    RecordSequence<Record> const& ( Parser::*all )() const;
    void ( Parser::*push )( Record );
    void ( Parser::*is )( U32, Record );
    Record ( Parser::*pop )();
    void ( Parser::*popAll )();
};

template<class Record>
Record named( String name ) {
    Record record{};
    record.name = std::move( name );
    return record;
}

template<class Record>
std::vector<String> namesOf( RecordSequence<Record> const& records ) {
    std::vector<String> names;
    for( Record const& record : records )
        names.push_back( record.name );
    return names;
}

template<class Record>
void checkSequence( Parser& parser, SequenceOperations<Record> const& s ) {
    auto const& records = ( parser.*s.all )();
    EXPECT_THROW( ( parser.*s.pop )(), Vessa::VectorEmpty );
    EXPECT_THROW( ( parser.*s.is )( 0, named<Record>( "x" ) ), Vessa::VectorOutOfRange );
    for( char const* name : { "a", "b", "c" } )
        ( parser.*s.push )( named<Record>( name ) );
    EXPECT_THAT( namesOf( records ), ElementsAre( "a", "b", "c" ) );
    try {
        ( parser.*s.is )( 3, named<Record>( "x" ) );
        ADD_FAILURE() << "expected an exception";
    } catch( Vessa::VectorOutOfRange const& exception ) {
        EXPECT_EQ( exception.index(), 3 );
        EXPECT_EQ( exception.size(), 3 );
    }
    EXPECT_THAT( namesOf( records ), ElementsAre( "a", "b", "c" ) );
    ( parser.*s.is )( 2, named<Record>( "z" ) );
    ( parser.*s.is )( 0, named<Record>( "y" ) );
    EXPECT_THAT( namesOf( records ), ElementsAre( "y", "b", "z" ) );
    EXPECT_EQ( ( parser.*s.pop )().name, "z" );
    EXPECT_THAT( namesOf( records ), ElementsAre( "y", "b" ) );
    ( parser.*s.popAll )();
    EXPECT_TRUE( records.empty() );
    EXPECT_THROW( ( parser.*s.pop )(), Vessa::VectorEmpty );
}

#define SEQUENCE_TEST( Name, sequence, Record )                                                              \
    TEST_F( ParserState, Name ) {                                                                            \
        checkSequence<Record>( *parser_,                                                                     \
                               { &Parser::sequence, &Parser::sequence##Push, &Parser::sequence##Is,          \
                                 &Parser::sequence##Pop, &Parser::sequence##PopAll } );                      \
    }

SEQUENCE_TEST( ResourcesAreASequence, bfResources, BfResource )
SEQUENCE_TEST( TablesAreASequence, bfTables, BfTableInfo )
SEQUENCE_TEST( CountersAreASequence, bfCounters, BfTableCounterInfo )
SEQUENCE_TEST( MetersAreASequence, bfMeters, BfTableMeterInfo )
SEQUENCE_TEST( WredsAreASequence, bfWreds, BfTableWredInfo )
SEQUENCE_TEST( RegisterInfosAreASequence, bfRegisterInfos, BfRegisterInfo )
SEQUENCE_TEST( LearnQuantaInfosAreASequence, bfLearnQuantaInfos, BfLearnQuantaInfo )
SEQUENCE_TEST( ActionsAreASequence, bfActions, BfActionInfo )

TEST_F( ParserState, ContextFileOfTheSameMaskIsReplaced ) {
    parser_->contextFileIs( BfPipeMask( 3 ), "first" );
    parser_->contextFileIs( BfPipeMask( 3 ), "second" );
    EXPECT_EQ( parser_->contextFile().size(), 1 );
    EXPECT_EQ( parser_->contextFile( BfPipeMask( 3 ) ), "second" );
}

TEST_F( ParserState, ContextFileIsFoundByItsExactMask ) {
    parser_->contextFileIs( BfPipeMask( 3 ), "path" );
    for( U32 const mask : { 0U, 1U, 2U, 7U } ) {
        EXPECT_EQ( parser_->contextFile( BfPipeMask( mask ) ), "" ) << mask;
        EXPECT_FALSE( parser_->contextFileHas( BfPipeMask( mask ) ) ) << mask;
    }
}

TEST_F( ParserState, ContextFileDelOfAMissingMaskChangesNothing ) {
    parser_->contextFileIs( BfPipeMask( 3 ), "path" );
    EXPECT_EQ( parser_->contextFileDel( BfPipeMask( 1 ) ), "" );
    EXPECT_EQ( parser_->contextFile().size(), 1 );
    EXPECT_EQ( parser_->contextFile().changes(), 2 );
}

TEST_F( ParserState, ContextFilesAreIteratedByAscendingMask ) {
    for( U32 const mask : { 0x2U, 0x1U, 0xCU, 0x80000000U, 0U } )
        parser_->contextFileIs( BfPipeMask( mask ), "path" );
    EXPECT_THAT( keysOf( parser_->contextFile() ),
                 ElementsAre( BfPipeMask( 0 ), BfPipeMask( 1 ), BfPipeMask( 2 ), BfPipeMask( 0xC ),
                              BfPipeMask( 0x80000000 ) ) );
}

TEST_F( ParserState, OrderedMapCountsInsertionsAndRemovalsFromOne ) {
    auto const& map = parser_->contextFile();
    EXPECT_EQ( map.changes(), 1 );
    parser_->contextFileIs( BfPipeMask( 3 ), "path" );
    EXPECT_EQ( map.changes(), 2 );
    parser_->contextFileIs( BfPipeMask( 3 ), "other" );
    EXPECT_EQ( map.changes(), 2 ) << "a replaced value is no change";
    parser_->contextFileDel( BfPipeMask( 3 ) );
    EXPECT_EQ( map.changes(), 3 );
}

TEST_F( ParserState, RemovedEntryStaysValidForItsIteratorWhichGoesOnAtTheNextGreaterKey ) {
    for( U32 const mask : { 1U, 4U } )
        parser_->contextFileIs( BfPipeMask( mask ), "path " + std::to_string( mask ) );
    auto position = parser_->contextFile().begin();
    EXPECT_EQ( parser_->contextFileDel( position ), "path 1" );
    EXPECT_EQ( position->key().value(), 1 );
    EXPECT_EQ( position->value(), "path 1" );
    parser_->contextFileIs( BfPipeMask( 2 ), "inserted behind" );
    parser_->contextFileIs( BfPipeMask( 0 ), "inserted before" );
    ++position;
    EXPECT_EQ( position->key().value(), 2 );
    ++position;
    EXPECT_EQ( position->key().value(), 4 );
    ++position;
    EXPECT_EQ( position, parser_->contextFile().end() );
}

template<class Is, class Del, class DelAt, class DelAll, class Map>
void checkContainers( Map const& map, Is is, Del del, DelAt delAt, DelAll delAll ) {
    is( "x", 3 );
    is( "x", 5 );
    is( "a", 255 );
    is( "X", 1 );
    EXPECT_EQ( map.size(), 3 );
    EXPECT_EQ( map.value( "x" ), 5 );
    EXPECT_EQ( map.begin()->key(), "X" ) << "ordered by bytes";
    EXPECT_EQ( del( "missing" ), 0 );
    EXPECT_EQ( del( "a" ), 255 );
    EXPECT_EQ( delAt( map.find( "x" ) ), 5 );
    EXPECT_EQ( map.size(), 1 );
    delAll();
    EXPECT_TRUE( map.empty() );
}

#define CONTAINERS_TEST( Name, map )                                                                         \
    TEST_F( ParserState, Name ) {                                                                            \
        Parser& p = *parser_;                                                                                \
        using Map = Parser::map##Map;                                                                        \
        checkContainers(                                                                                     \
            p.map(), [ & ]( String const& k, U8 v ) { p.map##Is( k, v ); },                                  \
            [ & ]( String const& k ) { return p.map##Del( k ); },                                            \
            [ & ]( Map::iterator const& i ) { return p.map##Del( i ); }, [ & ] { p.map##DelAll(); } );       \
        EXPECT_EQ( p.map( "missing" ), 0 );                                                                  \
    }

CONTAINERS_TEST( IngressContainersAreAnOrderedMap, ingressPhvContainers )
CONTAINERS_TEST( EgressContainersAreAnOrderedMap, egressPhvContainers )

TEST_F( ParserState, ContextFileDelAllRemovesEveryFile ) {
    parser_->contextFileIs( BfPipeMask( 3 ), "path" );
    parser_->contextFileDelAll();
    EXPECT_TRUE( parser_->contextFile().empty() );
}

TEST_F( ParserState, HeadersAreAMap ) {
    parser_->bfHeadersIs( "eth", BfHeaderInfo( 14 ) );
    parser_->bfHeadersIs( "eth", BfHeaderInfo( 18 ) );
    parser_->bfHeadersIs( "ipv6", BfHeaderInfo( 40 ) );
    EXPECT_EQ( parser_->bfHeaders( "eth" ).size(), 18 );
    EXPECT_EQ( parser_->bfHeaders( "missing" ).size(), 0 );
    EXPECT_EQ( parser_->bfHeadersDel( "missing" ).size(), 0 );
    EXPECT_EQ( parser_->bfHeadersDel( "eth" ).size(), 18 );
    EXPECT_FALSE( parser_->bfHeadersHas( "eth" ) );
    parser_->bfHeadersDelAll();
    EXPECT_TRUE( parser_->bfHeaders().empty() );
}

TEST_F( ParserState, DynamicHashInfosAreAMap ) {
    parser_->bfDynamicHashInfoIs( "lag", { 1, 2, 1, { "ip.src" } } );
    parser_->bfDynamicHashInfoIs( "lag", { 3, 4, 2, { "ip.src", "ip.dst" } } );
    EXPECT_EQ( parser_->bfDynamicHashInfo().size(), 1 );
    EXPECT_THAT( parser_->bfDynamicHashInfo( "lag" ).fieldNames, ElementsAre( "ip.src", "ip.dst" ) );
    EXPECT_EQ( parser_->bfDynamicHashInfo( "missing" ).fieldCount, 0 );
    EXPECT_EQ( parser_->bfDynamicHashInfoDel( "missing" ).tableHdl, 0 );
    EXPECT_EQ( parser_->bfDynamicHashInfoDel( "lag" ).tableHdl, 3 );
    parser_->bfDynamicHashInfoIs( "ecmp", {} );
    parser_->bfDynamicHashInfoDelAll();
    EXPECT_TRUE( parser_->bfDynamicHashInfo().empty() );
}

TEST_F( ParserState, ResourceHandlesAreReplacedWholeWithCopiesOfTheQueues ) {
    BfZelResource first;
    first.name = "first";
    first.statReferencesEnq( 1 );
    BfZelResource second;
    second.name = "second";
    second.meterReferencesEnq( 2 );
    parser_->resourceHandlesIs( 7, first );
    parser_->resourceHandlesIs( 7, second );
    second.meterReferencesEnq( 3 );
    BfZelResource const stored = parser_->resourceHandles( 7 );
    EXPECT_EQ( stored.name, "second" );
    EXPECT_TRUE( stored.statReferences().empty() );
    EXPECT_EQ( stored.meterReferences().size(), 1 );
    EXPECT_EQ( parser_->resourceHandles().size(), 1 );
}

TEST_F( ParserState, ResourceHandlesAnswerAFalseEntryForAMiss ) {
    BfZelResource resource;
    resource.handle = 7;
    parser_->resourceHandlesIs( 7, resource );
    EXPECT_FALSE( parser_->resourceHandles( 8 ) );
    EXPECT_FALSE( parser_->resourceHandlesDel( 8 ) );
    EXPECT_TRUE( parser_->resourceHandlesDel( 7 ) );
    EXPECT_TRUE( parser_->resourceHandles().empty() );
    parser_->resourceHandlesIs( 7, resource );
    parser_->resourceHandlesDelAll();
    EXPECT_TRUE( parser_->resourceHandles().empty() );
}

TEST_F( ParserState, ParentTablesAreAMap ) {
    parser_->parentTableIs( "counter", "acl" );
    parser_->parentTableIs( "counter", "nat" );
    EXPECT_EQ( parser_->parentTable( "counter" ), "nat" );
    EXPECT_EQ( parser_->parentTable( "missing" ), "" );
    EXPECT_EQ( parser_->parentTableDel( "missing" ), "" );
    EXPECT_EQ( parser_->parentTableDel( "counter" ), "nat" );
    EXPECT_TRUE( parser_->parentTable().empty() );
    parser_->parentTableIs( "counter", "acl" );
    parser_->parentTableDelAll();
    EXPECT_TRUE( parser_->parentTable().empty() );
}

TEST_F( ParserState, MultipleParentTablesAreASet ) {
    parser_->multipleParentTablesIs( "counter" );
    parser_->multipleParentTablesIs( "counter" );
    EXPECT_EQ( parser_->multipleParentTables().size(), 1 );
    EXPECT_TRUE( parser_->multipleParentTablesHas( "counter" ) );
    EXPECT_EQ( parser_->multipleParentTablesDel( "missing" ), "" );
    EXPECT_EQ( parser_->multipleParentTablesDel( "counter" ), "counter" );
    EXPECT_TRUE( parser_->multipleParentTables().empty() );
    parser_->multipleParentTablesIs( "counter" );
    parser_->multipleParentTablesDelAll();
    EXPECT_TRUE( parser_->multipleParentTables().empty() );
}

TEST_F( ParserState, EveryRecordIsGivenBackWithTheParser ) {
    auto const before = liveAllocations();
    {
        auto const parser = emptyParser();
        parser->contextFileIs( BfPipeMask( 1 ), "path" );
        parser->bfResourcesPush( {} );
        parser->bfTablesPush( {} );
        parser->bfCountersPush( {} );
        parser->bfMetersPush( {} );
        parser->bfWredsPush( {} );
        parser->bfRegisterInfosPush( {} );
        parser->bfLearnQuantaInfosPush( {} );
        parser->bfActionsPush( {} );
        parser->bfHeadersIs( "eth", BfHeaderInfo( 14 ) );
        parser->bfDynamicHashInfoIs( "lag", {} );
        parser->ingressPhvContainersIs( "x", 1 );
        parser->egressPhvContainersIs( "x", 1 );
        parser->resourceHandlesIs( 1, {} );
        parser->parentTableIs( "counter", "acl" );
        parser->multipleParentTablesIs( "counter" );
        auto const during = liveAllocations();
        for( auto const& [ type, live ] : before ) {
            bool const ofTheModel = type != typeid( BfResourceInfoIntf ).name();
            EXPECT_EQ( during.at( type ) > live, ofTheModel ) << type;
        }
    }
    EXPECT_EQ( liveAllocations(), before );
}

} // namespace
} // namespace BfResourceInfo
