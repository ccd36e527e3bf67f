#include "tests/cli/Inputs.h"

#include "cli/commands/Answers.h"

#include <gmock/gmock.h>

namespace {

using Bfri::ExitStatus;
using Bfri::Format;
using Support::ContextBuilder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// The names in a list of records.
std::vector<String> namesIn( rapidjson::Value const& list ) {
    std::vector<String> names;
    for( auto const& record : list.GetArray() )
        names.emplace_back( record[ "name" ].GetString() );
    return names;
}

BfResource resource( String const& name, U32 handle, BfResourceType type, U32 first, U32 stages ) {
    return { name, handle, static_cast<U32>( type ), 64, true, stages, first };
}

class Show : public InFolder {
  protected:
    /// A resource with its entry by handle.
    BfResourceInfo::BfZelResource place( String const& name, U32 handle, BfResourceType type, U32 first,
                                         U32 stages = 1 ) {
        model->parser().bfResourcesPush( resource( name, handle, type, first, stages ) );
        BfResourceInfo::BfZelResource entry;
        entry.name = name;
        entry.handle = handle;
        entry.size = 64;
        model->parser().resourceHandlesIs( handle, entry );
        return entry;
    }

    std::pair<ExitStatus, std::vector<String>> failureOf( String const& name ) {
        try {
            answerOf( "show", *model, Format::text, name );
        } catch( Bfri::Failure const& failure ) {
            message = failure.what();
            return { failure.status, failure.suggestions };
        }
        return { ExitStatus::done, {} };
    }

    ConfigurationPtr const model = emptyModel();
    BfResourceInfo::BfResourceParser& parser = model->parser();
    String message;
};

TEST_F( Show, GivesATableAPageWithAllThatItTakes ) {
    BfTableInfo table = named<BfTableInfo>( "pipe.acl", 1 );
    table.size = table.totalEntries = table.maxEntries = 64;
    table.hitBitSupported = true;
    table.idleTimePrecision = 3;
    table.hitBitSmashLast = 3;
    table.selName = "pipe.selector";
    table.selHandle = 4;
    table.maxSelGroups = 2;
    parser.bfTablesPush( table );
    auto entry = place( "pipe.acl", 1, BfResourceType::ternaryMatch, 6, 2 );
    entry.statReferencesEnq( 5 );
    parser.resourceHandlesIs( 1, entry );
    place( "pipe.selector", 4, BfResourceType::selection, 8 );
    place( "pipe.hits", 5, BfResourceType::statistics, 7 );
    place( "pipe.other", 6, BfResourceType::statistics, 7 );
    BfTableCounterInfo counter = named<BfTableCounterInfo>( "pipe.hits", 1 );
    counter.ownHandle = 5;
    counter.direct = true;
    counter.associatedTable = "pipe.acl";
    parser.bfCountersPush( counter );
    parser.bfCountersPush( named<BfTableCounterInfo>( "pipe.other", 6 ) );
    parser.bfActionsPush( { 17, "permit", "pipe.acl" } );
    parser.bfActionsPush( { 18, "permit", "pipe.other" } );
    EXPECT_EQ( answerOf( "show", *model, Format::text, "acl" ), R"(table pipe.acl
  handle             0x00000001
  size               64
  totalEntries       64
  hitBitSupported    yes
  idleTimePrecision  3
  hitBitSmashOffset  0
  hitBitSmashLast    3
  maxEntries         64
  maxPartitions      0
  maxPrios           0
  hasActionProfile   no
  maxSelGroups       2
  maxSelEntries      0
  selHandle          0x00000004
  selName            pipe.selector
  placed             2 stage tables, the first in stage 6, ingress

  resources
    HANDLE      SIZE  TYPE           DIRECTION  FIRST STAGE  STAGE TABLES  NAME
    0x00000001    64  ternary_match  ingress              6             2  pipe.acl
    0x00000004    64  selection      ingress              8             1  pipe.selector
    0x00000005    64  statistics     ingress              7             1  pipe.hits

  counters
    HANDLE      OWN HANDLE  SIZE  DIRECT  BYTES  PACKETS  PIPE  NAME
    0x00000001  0x00000005     0  yes     no     no       -     pipe.hits

  actions
    HANDLE      NAME
    0x00000011  permit
)" );
}

TEST_F( Show, SaysThatATableIsNotPlaced ) {
    parser.bfTablesPush( named<BfTableInfo>( "acl", 1 ) );
    EXPECT_THAT( answerOf( "show", *model, Format::text, "acl" ), HasSubstr( "placed            no\n" ) );
    auto const answer = jsonAnswerOf( "show", *model, "acl" );
    EXPECT_FALSE( answer[ "bfTables" ][ 0 ][ "placed" ].GetBool() );
    EXPECT_THAT( namesIn( answer[ "bfTables" ][ 0 ][ "resources" ] ), IsEmpty() );
}

TEST_F( Show, AsJsonHasTheRecordsFieldsThenAMemberForEachRelation ) {
    parser.bfTablesPush( named<BfTableInfo>( "acl", 1 ) );
    place( "acl", 1, BfResourceType::hashMatch, 3 );
    auto const answer = jsonAnswerOf( "show", *model, "acl" );
    EXPECT_THAT( memberNames( answer ), ElementsAre( "format", "name", "bfTables" ) );
    EXPECT_THAT( memberNames( answer[ "bfTables" ][ 0 ] ),
                 ElementsAre( "name", "handle", "size", "totalEntries", "hitBitSupported",
                              "idleTimePrecision", "hitBitSmashOffset", "hitBitSmashLast", "maxEntries",
                              "maxPartitions", "maxPrios", "hasActionProfile", "maxAdtEntries",
                              "maxSelGroups", "maxSelEntries", "adtHandle", "selHandle", "adtName", "selName",
                              "logicalPipe", "placed", "resources", "counters", "meters", "wreds",
                              "registers", "actions" ) );
    EXPECT_TRUE( answer[ "bfTables" ][ 0 ][ "placed" ].GetBool() );
    EXPECT_EQ(
        compact( answer[ "bfTables" ][ 0 ][ "resources" ] ),
        R"([{"name":"acl","handle":1,"type":2,"typeName":"hash_match","size":64,"ingress":true,"stages":1,"stageStart":3}])" );
}

/// A kind of record that belongs to tables, and how a context file says to which.
struct Relation {
    char const* member;
    char const* part;
    Support::Table ( *attached )( std::string_view name );
    Support::Table& ( Support::Table::*reference )( std::string_view name );
};

std::ostream& operator<<( std::ostream& os, Relation const& row ) { return os << row.member; }

class ShowRelation : public InFolder, public testing::WithParamInterface<Relation> {
  protected:
    /// The table's page lists the record, and the record's page lists the table; no other does.
    void expectRelated( Support::Table const& owner, Support::Table const& attached ) {
        auto const model = modelOf(
            ContextBuilder().table( owner ).table( Support::matchTable( "other" ) ).table( attached ) );
        auto const page = jsonAnswerOf( "show", *model, "acl" );
        EXPECT_THAT( namesIn( page[ "bfTables" ][ 0 ][ GetParam().part ] ), ElementsAre( "it" ) );
        EXPECT_THAT( namesIn( page[ "bfTables" ][ 0 ][ "resources" ] ), ElementsAre( "acl", "it" ) );
        auto const other = jsonAnswerOf( "show", *model, "other" );
        EXPECT_THAT( namesIn( other[ "bfTables" ][ 0 ][ GetParam().part ] ), IsEmpty() );
        auto const itself = jsonAnswerOf( "show", *model, "it" );
        EXPECT_THAT( memberNames( itself ), ElementsAre( "format", "name", GetParam().member ) );
        EXPECT_THAT( namesIn( itself[ GetParam().member ][ 0 ][ "tables" ] ), ElementsAre( "acl" ) );
        EXPECT_THAT( namesIn( itself[ GetParam().member ][ 0 ][ "resources" ] ), ElementsAre( "it" ) );
        EXPECT_TRUE( itself[ GetParam().member ][ 0 ][ "placed" ].GetBool() );
    }
};

TEST_P( ShowRelation, IsThatOfADirectOneToItsTable ) {
    auto owner = Support::matchTable( "acl" );
    expectRelated( ( owner.*GetParam().reference )( "it" ),
                   GetParam().attached( "it" ).referenced( "direct" ) );
}

TEST_P( ShowRelation, IsThatOfAnIndirectOneToATableThatReferencesIt ) {
    auto owner = Support::matchTable( "acl" );
    expectRelated( ( owner.*GetParam().reference )( "it" ),
                   GetParam().attached( "it" ).referenced( "indirect" ) );
}

TEST_P( ShowRelation, IsThatOfAnIndirectOneToTheTableWhoseActionsNameIt ) {
    expectRelated( Support::matchTable( "acl" ).action( "use", { "it" } ),
                   GetParam().attached( "it" ).referenced( "indirect" ) );
}

INSTANTIATE_TEST_SUITE_P(
    OfKinds, ShowRelation,
    testing::Values(
        Relation{ "bfCounters", "counters", Support::statisticsTable, &Support::Table::statistics },
        Relation{ "bfMeters", "meters", Support::meterTable, &Support::Table::meter },
        Relation{ "bfWreds", "wreds", Support::wredTable, &Support::Table::meter },
        Relation{ "bfRegisterInfos", "registers", Support::statefulTable, &Support::Table::stateful } ),
    []( auto const& test ) { return String( test.param.part ); } );

TEST_F( Show, SaysWhichTablesReferenceOneThatSeveralActionsName ) {
    auto const shared =
        modelOf( ContextBuilder()
                     .table( Support::matchTable( "acl" ).action( "a", { "it" } ).meter( "it" ) )
                     .table( Support::matchTable( "bcl" ).action( "b", { "it" } ).meter( "it" ) )
                     .table( Support::meterTable( "it" ).referenced( "indirect" ) ) );
    auto const answer = jsonAnswerOf( "show", *shared, "it" );
    EXPECT_TRUE( answer[ "bfMeters" ][ 0 ][ "severalParents" ].GetBool() );
    EXPECT_THAT( namesIn( answer[ "bfMeters" ][ 0 ][ "tables" ] ),
                 testing::UnorderedElementsAre( "acl", "bcl" ) );
    EXPECT_THAT( answerOf( "show", *shared, Format::text, "it" ),
                 HasSubstr( "associatedTable  (several)\n  severalParents   yes\n" ) );
}

TEST_F( Show, KeepsFilesApartThatHaveTheSameNames ) {
    parser.bfrtConfigIs( "bfrt.json" );
    for( U32 const pipe : { 0x00000000U, 0x20000000U } ) {
        parser.bfTablesPush( named<BfTableInfo>( "acl", pipe | 1 ) );
        place( "acl", pipe | 1, BfResourceType::hashMatch, 3 );
        place( "hits", pipe | 5, BfResourceType::statistics, 4 );
        parser.bfCountersPush( named<BfTableCounterInfo>( "hits", pipe | 5 ) );
        parser.bfActionsPush( { pipe | 17, "count", "acl" } );
    }
    parser.parentTableIs( "hits", "acl" );
    auto const answer = jsonAnswerOf( "show", *model, "acl" );
    ASSERT_EQ( answer[ "bfTables" ].Size(), 2U );
    for( auto const& table : answer[ "bfTables" ].GetArray() ) {
        U32 const pipe = table[ "handle" ].GetUint() & 0xF0000000U;
        ASSERT_EQ( table[ "counters" ].Size(), 1U );
        EXPECT_EQ( table[ "counters" ][ 0 ][ "handle" ].GetUint(), pipe | 5 );
        ASSERT_EQ( table[ "actions" ].Size(), 1U );
        EXPECT_EQ( table[ "actions" ][ 0 ][ "handle" ].GetUint(), pipe | 17 );
        ASSERT_EQ( table[ "resources" ].Size(), 2U );
        EXPECT_EQ( table[ "resources" ][ 1 ][ "handle" ].GetUint(), pipe | 5 );
    }
    auto const action = jsonAnswerOf( "show", *model, "count" );
    EXPECT_EQ( action[ "bfActions" ][ 0 ][ "tables" ][ 0 ][ "handle" ].GetUint(), 0x00000001U );
    EXPECT_EQ( action[ "bfActions" ][ 1 ][ "tables" ][ 0 ][ "handle" ].GetUint(), 0x20000001U );
}

TEST_F( Show, ShowsEveryKindThatBearsTheName ) {
    parser.bfHeadersIs( "x", BfHeaderInfo( 14 ) );
    parser.bfLearnQuantaInfosPush( named<BfLearnQuantaInfo>( "x", 9 ) );
    parser.bfTablesPush( named<BfTableInfo>( "x", 1 ) );
    parser.bfWredsPush( named<BfTableWredInfo>( "x", 7 ) );
    auto const answer = jsonAnswerOf( "show", *model, "x" );
    EXPECT_THAT( memberNames( answer ),
                 ElementsAre( "format", "name", "bfTables", "bfWreds", "bfLearnQuantaInfos", "bfHeaders" ) );
    String const text = answerOf( "show", *model, Format::text, "x" );
    EXPECT_THAT( text, StartsWith( "table x\n" ) );
    EXPECT_THAT( text, HasSubstr( "\n\nwred x\n" ) );
    EXPECT_THAT( text, HasSubstr( "\n\nlearn-quanta x\n  handle  0x00000009\n\nheader x\n  size  14\n" ) );
}

TEST_F( Show, OfAnEmptyNameHasADashAsListsHave ) {
    parser.bfTablesPush( named<BfTableInfo>( "", 1 ) );
    EXPECT_THAT( answerOf( "show", *model, Format::text, "0x1" ), StartsWith( "table -\n  handle" ) );
}

TEST_F( Show, GivesAResourceThatIsNoOtherRecordsPlaceTheTablesThatUseIt ) {
    BfTableInfo table = named<BfTableInfo>( "acl", 1 );
    table.adtName = "members";
    table.adtHandle = 3;
    parser.bfTablesPush( table );
    place( "acl", 1, BfResourceType::hashMatch, 3, 2 );
    place( "members", 3, BfResourceType::actionData, 5 );
    EXPECT_EQ( answerOf( "show", *model, Format::text, "members" ), R"(resource members
  handle          0x00000003
  type            action_data
  size            64
  direction       ingress
  stages          1
  stageStart      5
  severalParents  no

  tables
    HANDLE      SIZE  FIRST STAGE  STAGE TABLES  NAME
    0x00000001     0            3             2  acl
)" );
    EXPECT_THAT( memberNames( jsonAnswerOf( "show", *model, "members" ) ),
                 ElementsAre( "format", "name", "bfResources" ) );
}

TEST_F( Show, SaysOfWhatBelongsToTablesThatTheModelKnowsNone ) {
    place( "direct", 3, BfResourceType::actionData, 5 );
    place( "selector", 4, BfResourceType::selection, 5 );
    place( "acl", 1, BfResourceType::hashMatch, 3 );
    parser.bfCountersPush( named<BfTableCounterInfo>( "hits", 5 ) );
    for( auto const& [ name, said ] :
         { std::pair( "direct", "none that the model knows: it keeps only the tables of "
                                "indirect action data" ),
           std::pair( "selector", "none that the model knows" ),
           std::pair( "hits", "none that the model knows" ) } )
        EXPECT_THAT( answerOf( "show", *model, Format::text, name ),
                     testing::EndsWith( String( "\n\n  tables\n    " ) + said + "\n" ) );
    EXPECT_THAT( answerOf( "show", *model, Format::text, "acl" ), Not( HasSubstr( "tables\n" ) ) );
}

TEST_F( Show, GivesATableWithStaticEntriesItsCounters ) {
    auto const shown =
        modelOf( ContextBuilder()
                     .table( Support::matchTable( "acl" ).controllable( false ).statistics( "hits" ) )
                     .table( Support::statisticsTable( "hits" ).referenced( "direct" ) ) );
    auto const answer = jsonAnswerOf( "show", *shown, "acl" );
    EXPECT_THAT( namesIn( answer[ "bfResources" ][ 0 ][ "counters" ] ), ElementsAre( "hits" ) );
    EXPECT_THAT( namesIn( jsonAnswerOf( "show", *shown, "hits" )[ "bfCounters" ][ 0 ][ "tables" ] ),
                 ElementsAre( "acl" ) );
}

std::size_t countOf( String const& text, String const& part ) {
    std::size_t count = 0;
    for( auto at = text.find( part ); at != String::npos; at = text.find( part, at + 1 ) )
        ++count;
    return count;
}

TEST_F( Show, OfManyOfAKindShowsTheFirstAndSaysHowManyMoreThereAre ) {
    auto const push = [ & ]( U32 handle ) {
        parser.bfTablesPush( named<BfTableInfo>( "acl", handle ) );
        place( "acl", handle, BfResourceType::hashMatch, 3 );
        parser.bfActionsPush( { 100 + handle, "permit", "acl" } );
    };
    for( U32 handle = 1; handle <= 8; ++handle )
        push( handle );
    EXPECT_THAT( answerOf( "show", *model, Format::text, "acl" ), Not( HasSubstr( "more" ) ) );
    EXPECT_FALSE( jsonAnswerOf( "show", *model, "acl" ).HasMember( "moreRecords" ) );
    push( 9 );
    EXPECT_THAT( answerOf( "show", *model, Format::text, "acl" ),
                 testing::EndsWith( "\n\nand 1 more table of this name; 'bfri tables' lists them all, with "
                                    "handles for 'bfri show'\n" ) );
    push( 10 );
    String const text = answerOf( "show", *model, Format::text, "acl" );
    EXPECT_EQ( countOf( text, "table acl\n" ), 8U );
    EXPECT_THAT( text, HasSubstr( "\n\nand 2 more tables of this name; " ) );
    EXPECT_THAT( text, Not( HasSubstr( "resource acl" ) ) );
    auto const answer = jsonAnswerOf( "show", *model, "acl" );
    EXPECT_THAT( memberNames( answer ), ElementsAre( "format", "name", "bfTables", "moreRecords" ) );
    EXPECT_EQ( answer[ "bfTables" ].Size(), 8U );
    EXPECT_EQ( compact( answer[ "moreRecords" ] ), R"({"bfTables":2})" );
    EXPECT_EQ( jsonAnswerOf( "show", *model, "permit" )[ "bfActions" ].Size(), 10U );
}

TEST_F( Show, SaysOnceWhatSeveralOfANameHave ) {
    for( U32 const handle : { 1U, 2U } ) {
        parser.bfTablesPush( named<BfTableInfo>( "acl", handle ) );
        parser.bfActionsPush( { 16 + handle, "action" + std::to_string( handle ), "acl" } );
    }
    String const text = answerOf( "show", *model, Format::text, "acl" );
    EXPECT_EQ( countOf( text, "action2\n" ), 1U );
    EXPECT_THAT( text, testing::EndsWith( "\n  actions\n    the same 2 as above\n" ) );
    EXPECT_EQ( jsonAnswerOf( "show", *model, "acl" )[ "bfTables" ][ 1 ][ "actions" ].Size(), 2U );
    parser.bfrtConfigIs( "bfrt.json" ); // now files of pipe 0 and 1
    parser.bfTablesPush( named<BfTableInfo>( "acl", 0x10000001 ) );
    for( U32 const handle : { 0x10000011U, 0x10000012U } )
        parser.bfActionsPush( { handle, "other", "acl" } );
    EXPECT_EQ( countOf( answerOf( "show", *model, Format::text, "acl" ), "as above" ), 1U );
}

TEST_F( Show, OfManyThatBelongToTablesShowsTheFirst ) {
    for( U32 handle = 1; handle <= 12; ++handle ) {
        parser.bfCountersPush( named<BfTableCounterInfo>( "hits", handle ) );
        parser.bfLearnQuantaInfosPush( named<BfLearnQuantaInfo>( "hits", 100 + handle ) );
        place( "hits", 200 + handle, BfResourceType::selection, 3 );
    }
    auto const answer = jsonAnswerOf( "show", *model, "hits" );
    EXPECT_EQ( compact( answer[ "moreRecords" ] ),
               R"({"bfResources":4,"bfCounters":4,"bfLearnQuantaInfos":4})" );
}

TEST_F( Show, ListsTheActionsOfAName ) {
    for( U32 const i : { 1U, 2U } ) {
        String const table = "t" + std::to_string( i );
        parser.bfTablesPush( named<BfTableInfo>( table, i ) );
        parser.bfActionsPush( { 16 + i, "drop", table } );
    }
    EXPECT_EQ( answerOf( "show", *model, Format::text, "drop" ), R"(action drop
  HANDLE      TABLE HANDLE  OF TABLE
  0x00000011  0x00000001    t1
  0x00000012  0x00000002    t2
)" );
}

TEST_F( Show, KeepsToTheActionOfOneTableWhereItIsNamed ) {
    parser.bfActionsPush( { 17, "permit", "pipe.acl" } );
    parser.bfActionsPush( { 18, "permit", "pipe.other" } );
    parser.bfTablesPush( named<BfTableInfo>( "acl", 1 ) );
    String const whole = answerOf( "show", *model, Format::text, "permit" );
    EXPECT_THAT( whole, HasSubstr( "pipe.acl" ) );
    EXPECT_THAT( whole, HasSubstr( "pipe.other" ) );
    String const one = answerOf( "show", *model, Format::text, "permit of acl" );
    EXPECT_THAT( one, testing::StartsWith( "action permit\n" ) );
    EXPECT_THAT( one, HasSubstr( "pipe.acl" ) );
    EXPECT_THAT( one, testing::Not( HasSubstr( "pipe.other" ) ) );
    auto const json = jsonAnswerOf( "show", *model, "permit of pipe.other" );
    ASSERT_EQ( json[ "bfActions" ].Size(), 1U );
    EXPECT_EQ( json[ "bfActions" ][ 0 ][ "handle" ].GetUint(), 18U );
    for( char const* const word : { "permit of none", "acl of acl", "none of acl" } )
        EXPECT_THROW( answerOf( "show", *model, Format::text, word ), Bfri::Failure ) << word;
}

TEST_F( Show, TakesNamesApartAtEveryOf ) {
    parser.bfActionsPush( { 17, "drop", "acl of tenants" } );
    parser.bfActionsPush( { 18, "drop of tenants", "pipe.acl" } );
    parser.bfActionsPush( { 19, "drop", "pipe.acl" } );
    auto const handlesOf = [ & ]( String const& word ) {
        std::vector<U32> handles;
        auto const answer = jsonAnswerOf( "show", *model, word );
        for( auto const& action : answer[ "bfActions" ].GetArray() )
            handles.push_back( action[ "handle" ].GetUint() );
        return handles;
    };
    EXPECT_THAT( handlesOf( "drop of acl of tenants" ), ElementsAre( 17U ) );
    EXPECT_THAT( handlesOf( "drop of tenants of pipe.acl" ), ElementsAre( 18U ) );
    EXPECT_THAT( handlesOf( "drop of tenants of acl" ), ElementsAre( 18U ) );
    EXPECT_THAT( handlesOf( "drop of tenants" ), ElementsAre( 18U ) ); // the name of an action
    EXPECT_THAT( handlesOf( "0x13 of acl" ), ElementsAre( 19U ) );
    parser.bfActionsPush( { 20, "drop of acl", "tenants" } ); // the same words, taken apart elsewhere
    EXPECT_THAT( handlesOf( "drop of acl of tenants" ), ElementsAre( 17U, 20U ) );
    parser.bfHeadersIs( "drop of acl of tenants", BfHeaderInfo( 14 ) );
    EXPECT_THAT( memberNames( jsonAnswerOf( "show", *model, "drop of acl of tenants" ) ),
                 ElementsAre( "format", "name", "bfHeaders" ) );
}

TEST_F( Show, OfSeveralActionsThatAreMeantSaysHowToNameEach ) {
    parser.bfActionsPush( { 17, "pipe.drop", "pipe.a.acl" } );
    parser.bfActionsPush( { 18, "pipe.drop", "pipe.b.acl" } );
    EXPECT_THAT( failureOf( "drop of acl" ).second,
                 ElementsAre( "pipe.drop of pipe.a.acl", "pipe.drop of pipe.b.acl" ) );
    EXPECT_EQ( message, "'drop of acl' means 2 actions; say which:" );
    EXPECT_THAT( failureOf( "drop of lpm" ).second,
                 ElementsAre( "pipe.drop of pipe.a.acl", "pipe.drop of pipe.b.acl" ) );
    EXPECT_EQ( message, "no action 'drop of lpm'; actions like it:" );
}

TEST_F( Show, TakesAHandleThatIsNobodysName ) {
    parser.bfTablesPush( named<BfTableInfo>( "acl", 0x11 ) );
    place( "acl", 0x11, BfResourceType::hashMatch, 3 );
    parser.bfTablesPush( named<BfTableInfo>( "acl", 0x12 ) );
    parser.bfActionsPush( { 0x11, "permit", "acl" } );
    parser.bfActionsPush( { 0x13, "permit", "acl" } );
    for( char const* const word : { "0x11", "17", "0x00000011" } ) {
        auto const answer = jsonAnswerOf( "show", *model, word );
        EXPECT_THAT( memberNames( answer ), ElementsAre( "format", "name", "bfTables", "bfActions" ) );
        EXPECT_TRUE( answer[ "name" ].IsNull() ); // there are two
        ASSERT_EQ( answer[ "bfTables" ].Size(), 1U );
        EXPECT_EQ( answer[ "bfTables" ][ 0 ][ "handle" ].GetUint(), 0x11U );
        ASSERT_EQ( answer[ "bfActions" ].Size(), 1U );
        EXPECT_EQ( answer[ "bfActions" ][ 0 ][ "handle" ].GetUint(), 0x11U );
    }
    EXPECT_STREQ( jsonAnswerOf( "show", *model, "0x12" )[ "name" ].GetString(), "acl" );
    String const text = answerOf( "show", *model, Format::text, "0x11" );
    EXPECT_THAT( text, StartsWith( "table acl\n" ) );
    EXPECT_THAT( text, testing::EndsWith( "\n\naction permit\n  HANDLE      TABLE HANDLE  OF TABLE\n"
                                          "  0x00000011  0x00000011    acl\n" ) );
    parser.bfHeadersIs( "17", BfHeaderInfo( 14 ) );
    EXPECT_THAT( memberNames( jsonAnswerOf( "show", *model, "17" ) ),
                 ElementsAre( "format", "name", "bfHeaders" ) );
}

TEST_F( Show, OfAHandleShowsWhateverHasItInAnyField ) {
    for( U32 const handle : { 7U, 8U } )
        parser.bfLearnQuantaInfosPush( named<BfLearnQuantaInfo>( "learn", handle ) );
    parser.bfDynamicHashInfoIs( "learn", { 8, 9, 0, {} } );
    parser.bfHeadersIs( "learn", BfHeaderInfo( 14 ) );
    auto const seven = jsonAnswerOf( "show", *model, "7" );
    EXPECT_THAT( memberNames( seven ), ElementsAre( "format", "name", "bfLearnQuantaInfos" ) );
    EXPECT_EQ( seven[ "bfLearnQuantaInfos" ].Size(), 1U );
    EXPECT_THAT( memberNames( jsonAnswerOf( "show", *model, "8" ) ),
                 ElementsAre( "format", "name", "bfLearnQuantaInfos", "bfDynamicHashInfo" ) );
    EXPECT_THAT( memberNames( jsonAnswerOf( "show", *model, "9" ) ),
                 ElementsAre( "format", "name", "bfDynamicHashInfo" ) );
}

TEST_F( Show, OfTheHandleOfWhatIsDirectShowsThat ) {
    BfTableCounterInfo counter = named<BfTableCounterInfo>( "hits", 1 );
    counter.ownHandle = 5;
    counter.direct = true;
    parser.bfCountersPush( counter );
    BfTableMeterInfo meter = named<BfTableMeterInfo>( "police", 1 );
    meter.direct = true;
    parser.bfMetersPush( meter );
    parser.bfTablesPush( named<BfTableInfo>( "acl", 1 ) );
    place( "acl", 1, BfResourceType::hashMatch, 3 );
    place( "hits", 5, BfResourceType::statistics, 4 );
    place( "police", 6, BfResourceType::meter, 4 );
    for( auto const& [ word, member ] :
         { std::pair( "1", "bfTables" ), std::pair( "5", "bfCounters" ), std::pair( "6", "bfMeters" ) } )
        EXPECT_THAT( memberNames( jsonAnswerOf( "show", *model, word ) ),
                     ElementsAre( "format", "name", member ) );
}

TEST_F( Show, OfAHandleThatNothingHasSaysSo ) {
    BfTableInfo table = named<BfTableInfo>( "acl", 1 );
    table.adtHandle = 3;
    parser.bfTablesPush( table );
    EXPECT_THAT( failureOf( "0x3" ).second, ElementsAre( "acl" ) );
    EXPECT_EQ( message, "nothing has the handle 0x00000003 as its own; these refer to it:" );
    EXPECT_EQ( failureOf( "0x55" ).first, ExitStatus::no );
    EXPECT_EQ( message, "no record named '0x55': nothing has that handle" );
    parser.bfTablesPush( named<BfTableInfo>( "lpm", 0x1000031 ) );
    failureOf( "01000031" );
    EXPECT_EQ( message, "no record named '01000031': did you mean 0x01000031?" );
}

TEST_F( Show, NumbersTheFieldsOfAHash ) {
    parser.bfDynamicHashInfoIs( "hash", { 3, 4, 2, { "hdr.b", "hdr.a" } } );
    EXPECT_EQ( answerOf( "show", *model, Format::text, "hash" ), R"(hash hash
  tableHdl      0x00000003
  fieldListHdl  0x00000004
  fieldCount    2
  fieldNames    1 hdr.b
                2 hdr.a
)" );
    EXPECT_EQ( compact( jsonAnswerOf( "show", *model, "hash" )[ "bfDynamicHashInfo" ][ 0 ][ "fieldNames" ] ),
               R"(["hdr.b","hdr.a"])" );
}

TEST_F( Show, GivesAFieldInThePhvItsBytesInBothDirections ) {
    parser.ingressPhvContainersIs( "hdr.mac", 6 );
    parser.egressPhvContainersIs( "hdr.mac", 8 );
    parser.egressPhvContainersIs( "hdr.port", 2 );
    EXPECT_EQ( answerOf( "show", *model, Format::text, "mac" ),
               "phv hdr.mac\n  ingressBytes  6\n  egressBytes   8\n" );
    EXPECT_EQ( answerOf( "show", *model, Format::text, "port" ), "phv hdr.port\n  egressBytes  2\n" );
}

TEST_F( Show, OfAnAmbiguousSuffixListsTheCandidatesOfAllKinds ) {
    parser.bfTablesPush( named<BfTableInfo>( "a.x", 1 ) );
    parser.bfMetersPush( named<BfTableMeterInfo>( "b.x", 2 ) );
    auto const [ status, names ] = failureOf( "x" );
    EXPECT_EQ( status, ExitStatus::no );
    EXPECT_EQ( message, "'x' is the end of several records' names:" );
    EXPECT_THAT( names, ElementsAre( "a.x", "b.x" ) );
}

TEST_F( Show, OfASuffixOfOneNameThatTwoKindsBearIsNotAmbiguous ) {
    parser.bfTablesPush( named<BfTableInfo>( "a.x", 1 ) );
    place( "a.x", 1, BfResourceType::hashMatch, 3 );
    EXPECT_EQ( failureOf( "x" ).first, ExitStatus::done );
}

TEST_F( Show, OfAnUnknownNameSuggestsNamesOfAnyKind ) {
    parser.bfHeadersIs( "ethernet", BfHeaderInfo( 14 ) );
    auto const [ status, names ] = failureOf( "ethrnet" );
    EXPECT_EQ( status, ExitStatus::no );
    EXPECT_EQ( message, "no record named 'ethrnet'; names like it:" );
    EXPECT_THAT( names, ElementsAre( "ethernet" ) );
    failureOf( "zzzzzz" );
    EXPECT_EQ( message, "no record named 'zzzzzz'; 'bfri names' lists them all" );
}

TEST_F( Show, KeepsToTheTerminal ) {
    parser.bfTablesPush( named<BfTableInfo>( "acl\x1b", 1 ) );
    place( "acl\x1b", 1, BfResourceType::hashMatch, 3 );
    std::ostringstream out;
    std::ostringstream err;
    Bfri::show( *model, { nullptr, { "", "acl\x1b" } }, { out, err, { .columns = 60 } } );
    EXPECT_THAT( out.str(), Not( HasSubstr( "\x1b" ) ) );
    EXPECT_THAT( out.str(), HasSubstr( "    HANDLE      SIZE  TYPE        DIRECTION  >  NAME\n" ) );
    std::istringstream lines( out.str() );
    for( String line; std::getline( lines, line ); )
        EXPECT_LE( line.size(), 60U ) << line;
}

} // namespace
