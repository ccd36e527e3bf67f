#include "resourceinfo/parser/context/MatchTables.h"
#include "resourceinfo/parser/context/Preprocess.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/support/Assertions.h"

#include <csignal>
#include <functional>
#include <gmock/gmock.h>

using namespace Context;

// What a process without a handler prints and how it ends, once for each operation that can fail. All
// conditions are tested elsewhere, through a handler that throws.

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::DeviceBuilder;
using Support::matchTable;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::KilledBySignal;
using testing::StartsWith;

TEST( DeathTest, DeviceWithoutPipelinesSaysItInThreePlaces ) {
    SwitchFolder const folder;
    String const conf = folder.conf( DeviceBuilder() );
    EXPECT_EXIT(
        bfResourceInfoIntfFactory( conf ), KilledBySignal( SIGABRT ),
        testing::Eq( "BfResourceParser:283: void BfResourceInfo::BfResourceParser::parseSwitchConf(): "
                     "assertion failed: \"numPipelines > 0\" == nullptr\nnumPipelines is 0\n"
                     "in switch configuration " +
                     folder.path( "switch.conf" ) + "\n" ) );
}

TEST( DeathTest, BadContextFileNamesConditionFileAndPlace ) {
    SwitchFolder const folder;
    String const conf = folder.conf( ContextBuilder()
                                         .table( matchTable( "first" ) )
                                         .table( matchTable( "acl" ).with( "/match_attributes", "null" ) ) );
    EXPECT_EXIT( bfResourceInfoIntfFactory( conf ), KilledBySignal( SIGABRT ),
                 AllOf( StartsWith( "BfResourceParser:" ),
                        HasSubstr( ": assertion failed: match_attributes.IsObject()\nin context file " ),
                        HasSubstr( folder.path( "context.json" ) ), HasSubstr( "/tables/1/match_attributes" ),
                        EndsWith( "table 1 \"acl\"\n" ) ) );
}

TEST( DeathTest, FileThatIsNoJsonFailsTheFirstLookUp ) {
    SwitchFolder const folder;
    folder.write( "context.json", "{ \"tables\": [ }" );
    String const conf = folder.conf( DeviceBuilder().pipeline( "context.json", { 0 } ) );
    EXPECT_EXIT( bfResourceInfoIntfFactory( conf ), KilledBySignal( SIGABRT ),
                 AllOf( StartsWith( "BfResourceParser:" ), HasSubstr( ": assertion failed: IsObject()\n" ),
                        HasSubstr( folder.path( "context.json" ) ), HasSubstr( "line 1, column 15" ) ) );
}

TEST( DeathTest, MissingFileIsTracedBeforeTheFailure ) {
    SwitchFolder const folder;
    String const conf = folder.conf( DeviceBuilder().pipeline( "context.json", { 0 } ) );
    EXPECT_EXIT( bfResourceInfoIntfFactory( conf ), KilledBySignal( SIGABRT ),
                 AllOf( StartsWith( "BfResourceParser/0 " ),
                        HasSubstr( "Can't open context file " + folder.path( "context.json" ) +
                                   ": No such file or directory\nBfResourceParser:" ),
                        HasSubstr( ": assertion failed: IsObject()\n" ) ) );
}

TEST( DeathTest, PreprocessingShowsTheTableThatFailed ) {
    auto const parser = emptyParser();
    JsonDocument document;
    document.Parse(
        ContextBuilder().table( matchTable( "acl" ).without( "/match_attributes" ) ).text().c_str() );
    EXPECT_EXIT( preprocessContext( parser.get(), Json( document ), {} ), KilledBySignal( SIGABRT ),
                 "BfResourceParser/0 [0-9]+ findStageTables: acl failed\n"
                 "BfResourceParser:[0-9]+: void preprocessContext\\(.*: assertion failed: false\n"
                 "in table 0 \"acl\"\n" );
}

TEST( DeathTest, MatchTableShowsTheHandleThatIsMissing ) {
    auto const parser = emptyParser();
    JsonDocument document;
    document.Parse( matchTable( "acl" )
                        .actionData( "adt" )
                        .with( "/action_data_table_refs/0/handle", "77" )
                        .text()
                        .c_str() );
    EXPECT_EXIT( parseBfTable( parser.get(), Json( document ), "context.json", {} ),
                 KilledBySignal( SIGABRT ),
                 "BfResourceParser/0 [0-9]+ readActionData: Can't find action tbl hdl 77\n"
                 "BfResourceParser:[0-9]+: .*: assertion failed: "
                 "parser->resourceHandlesHas\\( adtTblHdl \\)\n" );
}

TEST( DeathTest, ReverseLookUpShowsTheHandleThatNothingReferences ) {
    auto const parser = emptyParser();
    EXPECT_EXIT( getTableThatReferences( parser.get(), "meter_table_refs", 4294967295 ),
                 KilledBySignal( SIGABRT ),
                 "BfResourceParser/0 [0-9]+ getTableThatReferences: handle 4294967295 not found\n"
                 "BfResourceParser:[0-9]+: .*getTableThatReferences.*: assertion failed: "
                 "false && \"Table not found\"\n" );
}

BfTableInfo aclTable() {
    BfTableInfo table;
    table.name = "acl";
    return table;
}

struct FatalQuery {
    char const* operation;
    std::function<void( BfResourceInfoIntf& )> query;
    String condition;
    String message = ""; ///< with its line end
};

class QueryDeathTest : public testing::TestWithParam<FatalQuery> {};

TEST_P( QueryDeathTest, EndsTheProcess ) {
    auto const info = emptyInterface();
    info->parser()->bfResourcesPush( { "acl", 1, 1, 1, true, 1, 1 } );
    info->parser()->bfTablesPush( aclTable() );
    info->parser()->bfCountersPush( { "acl", 1, 1, 1, true, true, true, "acl", "" } );
    info->parser()->bfMetersPush( { "acl", 1, true, true, true, "acl", "" } );
    info->parser()->bfWredsPush( { "acl", 1, true, "" } );
    auto const& [ operation, query, condition, message ] = GetParam();
    EXPECT_EXIT( query( *info ), KilledBySignal( SIGABRT ),
                 AllOf( StartsWith( "BfResourceInfoIntf:" ),
                        HasSubstr( String( "BfResourceInfo::BfResourceInfoIntf::" ) + operation + "(" ),
                        EndsWith( ": assertion failed: " + condition + "\n" + message ) ) );
}

String const unknownName = "index != BfResourceInfoIndexInvalid";

INSTANTIATE_TEST_SUITE_P(
    Queries, QueryDeathTest,
    testing::Values(
        FatalQuery{ "bfResource", []( auto const& asked ) { asked.bfResource( 0x0FFFFFFF ); }, unknownName },
        FatalQuery{ "bfResource", []( auto const& asked ) { asked.bfResource( 1 ); },
                    "index < bfResourcesNum()" },
        FatalQuery{ "bfResourceField",
                    []( auto const& asked ) { asked.bfResourceField( "x", resourceSize ); }, unknownName,
                    "no resource x\n" },
        FatalQuery{ "bfResourceField",
                    []( auto const& asked ) { asked.bfResourceField( "acl", resourceStageStart ); },
                    "0 && \"Unsupported field\"", "field 5\n" },
        FatalQuery{ "bfResourceStageStart", []( auto const& asked ) { asked.bfResourceStageStart( "x" ); },
                    unknownName, "no resource x\n" },
        FatalQuery{ "bfResourceByHandle", []( auto const& asked ) { asked.bfResourceByHandle( 2 ); }, "0",
                    "no resource with handle 2\n" },
        FatalQuery{ "bfTableField", []( auto const& asked ) { asked.bfTableField( "x", tableSize ); },
                    unknownName, "no table x\n" },
        FatalQuery{
            "bfTableField",
            []( auto const& asked ) { asked.bfTableField( "acl", static_cast<BfTableFieldId>( 14 ) ); }, "0",
            "no field 14\n" },
        FatalQuery{ "bfTableString", []( auto const& asked ) { asked.bfTableString( "x", tableAdtName ); },
                    unknownName, "no table x\n" },
        FatalQuery{
            "bfTableString",
            []( auto const& asked ) { asked.bfTableString( "acl", static_cast<BfTableStringId>( 3 ) ); }, "0",
            "no field 3\n" },
        FatalQuery{ "bfTableByHandle", []( auto const& asked ) { asked.bfTableByHandle( 2 ); }, "0",
                    "no table with handle 2\n" },
        FatalQuery{ "bfTableCounter",
                    []( auto const& asked ) { asked.bfTableCounter( asked.bfTableCounterIndex( "x" ) ); },
                    unknownName },
        FatalQuery{ "bfTableCounter",
                    []( auto const& asked ) { asked.bfTableCounter( asked.bfTableCountersNum() ); },
                    "index < bfTableCountersNum()" },
        FatalQuery{ "bfTableCounterField",
                    []( auto const& asked ) { asked.bfTableCounterField( "x", counterSize ); }, unknownName,
                    "no counter x\n" },
        FatalQuery{ "bfTableCounterField",
                    []( auto const& asked ) {
                        asked.bfTableCounterField( "acl", static_cast<BfCounterFieldId>( 5 ) );
                    },
                    "0", "no field 5\n" },
        FatalQuery{ "bfTableMeter",
                    []( auto const& asked ) { asked.bfTableMeter( asked.bfTableMeterIndex( "x" ) ); },
                    unknownName },
        FatalQuery{ "bfTableMeter",
                    []( auto const& asked ) { asked.bfTableMeter( asked.bfTableMetersNum() ); },
                    "index < bfTableMetersNum()" },
        FatalQuery{ "bfTableMeterField",
                    []( auto const& asked ) { asked.bfTableMeterField( "x", meterPps ); }, unknownName,
                    "no meter x\n" },
        FatalQuery{
            "bfTableMeterField",
            []( auto const& asked ) { asked.bfTableMeterField( "acl", static_cast<BfMeterFieldId>( 4 ) ); },
            "0", "no field 4\n" },
        FatalQuery{ "bfTableWred",
                    []( auto const& asked ) { asked.bfTableWred( asked.bfTableWredIndex( "x" ) ); },
                    unknownName },
        FatalQuery{ "bfTableWred", []( auto const& asked ) { asked.bfTableWred( asked.bfTableWredNum() ); },
                    "index < bfTableWredNum()" },
        FatalQuery{ "bfTableWredField",
                    []( auto const& asked ) { asked.bfTableWredField( "x", wredHandle ); }, unknownName,
                    "no WRED table x\n" },
        FatalQuery{
            "bfTableWredField",
            []( auto const& asked ) { asked.bfTableWredField( "acl", static_cast<BfWredFieldId>( 2 ) ); },
            "0", "no field 2\n" },
        FatalQuery{ "bfRegister",
                    []( auto const& asked ) { asked.bfRegister( asked.bfRegisterIndex( "missing" ) ); },
                    unknownName },
        FatalQuery{ "bfRegister", []( auto const& asked ) { asked.bfRegister( asked.bfRegistersNum() ); },
                    "index < bfRegistersNum()" },
        FatalQuery{ "bfLearnQuanta",
                    []( auto const& asked ) { asked.bfLearnQuanta( asked.bfLearnQuantaIndex( "x" ) ); },
                    unknownName },
        FatalQuery{ "bfLearnQuanta",
                    []( auto const& asked ) { asked.bfLearnQuanta( asked.bfLearnQuantasNum() ); },
                    "index < bfLearnQuantasNum()" },
        FatalQuery{ "bfAction", []( auto const& asked ) { asked.bfAction( asked.bfActionIndex( "x" ) ); },
                    unknownName },
        FatalQuery{ "bfAction", []( auto const& asked ) { asked.bfAction( asked.bfActionsNum() ); },
                    "index < bfActionsNum()" },
        FatalQuery{ "bfAssociatedTable", []( auto& asked ) { asked.bfAssociatedTable( "nat" ); },
                    "false && \"check table name\"", "no meter or counter nat\n" } ),
    []( auto const& row ) { return row.param.operation + std::to_string( row.index ); } );

TEST( DeathTest, QueryWithoutAParserEndsTheProcess ) {
    auto const info = emptyInterface();
    info->parserDel();
    EXPECT_EXIT( info->bfTablesNum(), KilledBySignal( SIGABRT ),
                 AllOf( StartsWith( "BfResourceInfoIntf:" ),
                        EndsWith( ": assertion failed: parser\nquery without a parser\n" ) ) );
}

TEST( DeathTest, HeaderAndHashQueriesLetNoExceptionOut ) {
    auto const info = emptyInterface();
    info->parserDel();
    std::function<U32()> const queries[] = { [ & ] { return info->bfHeaderSize( "x" ); },
                                             [ & ] { return info->bfDynHashTableHdl( "x" ); },
                                             [ & ] { return info->bfDynHashFieldListHdl( "x" ); },
                                             [ & ] { return info->bfDynHashFieldCount( "x" ); },
                                             [ & ] { return info->bfDynHashFieldId( "x", "y" ); } };
    Support::ThrowingAssertions const scope;
    for( auto const& query : queries )
        EXPECT_EXIT( query(), KilledBySignal( SIGABRT ), HasSubstr( "terminate called" ) );
}

TEST( DeathTest, IndexOfATablePastTheEndIsNoDeath ) {
    auto const info = emptyInterface();
    EXPECT_ANY_THROW( info->bfTable( 0 ) );
}

} // namespace
} // namespace BfResourceInfo
