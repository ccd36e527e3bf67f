// What a survey knows about a file beyond the model, field by field.

#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/resourceinfo/parser/context/Surveys.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Context::FileSurvey;
using Context::SurveyedTable;
using Context::TruncatedSize;
using Support::ContextBuilder;
using Support::handleOf;
using Support::matchTable;
using Support::StageTable;
using Support::Table;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

BfResourceParserContext const inPipe3{ .pipeMask = BfPipeMask( 8 ), .handlePipeBits = 0x30000000 };

FileSurvey surveyOf( ContextBuilder const& builder, BfResourceParserContext const& context = {} ) {
    return BfResourceInfo::surveyOf( builder.text(), context );
}

SurveyedTable surveyOf( Table const& table, BfResourceParserContext const& context = {} ) {
    return surveyOf( ContextBuilder().table( table ), context ).tables.at( 0 );
}

class Survey : public testing::Test {
  protected:
    Support::TraceCollector const quiet_{ "BfResourceParser", {} };
};

TEST_F( Survey, SaysWhoseItIs ) {
    FileSurvey const survey = surveyOf( ContextBuilder(), inPipe3 );
    EXPECT_EQ( survey.path, "context.json" );
    EXPECT_EQ( survey.pipeMask, 8 );
    EXPECT_EQ( survey.handlePipeBits, 0x30000000 );
    EXPECT_TRUE( survey.isLoaded );
    EXPECT_EQ( survey.digest, std::nullopt );
}

TEST_F( Survey, HasWhatATableSaysOfItself ) {
    SurveyedTable const meter = surveyOf(
        Support::wredTable( "w" ).handle( 7 ).size( 12 ).with( "/direction", "\"egress\"" ), inPipe3 );
    EXPECT_EQ( meter.index, 0 );
    EXPECT_EQ( meter.name, "w" );
    EXPECT_THAT( meter.handle, Optional( 0x30000007 ) );
    EXPECT_EQ( meter.type, "meter" );
    EXPECT_EQ( meter.direction, "egress" );
    EXPECT_EQ( meter.howReferenced, "indirect" );
    EXPECT_EQ( meter.statisticsType, "" );
    EXPECT_TRUE( meter.isWred );
    EXPECT_THAT( meter.size, Optional( 12 ) );
    EXPECT_TRUE( meter.isControllable );
    EXPECT_FALSE( meter.isOmitted );
    EXPECT_THAT( meter.digests, IsEmpty() );
    EXPECT_EQ( surveyOf( Support::statisticsTable( "c" ) ).statisticsType, "packets_and_bytes" );
    EXPECT_FALSE( surveyOf( Support::meterTable( "m" ) ).isWred );
}

TEST_F( Survey, TakesWhatHasAnotherTypeForAbsent ) {
    SurveyedTable const table = surveyOf( matchTable( "t" )
                                              .with( "/name", "[\"t\"]" )
                                              .with( "/handle", "-1" )
                                              .with( "/size", "1.0" )
                                              .with( "/direction", "{}" )
                                              .with( "/table_type", "7" )
                                              .with( "/match_attributes", "[]" )
                                              .with( "/actions", "{}" )
                                              .with( "/meter_table_refs", "true" ) );
    EXPECT_EQ( table.name + table.direction + table.type, "" );
    EXPECT_EQ( table.handle, std::nullopt );
    EXPECT_EQ( table.size, std::nullopt );
    EXPECT_THAT( table.stageTables, IsEmpty() );
    EXPECT_THAT( table.actions, IsEmpty() );
    EXPECT_THAT( table.references, IsEmpty() );
}

TEST_F( Survey, EndsTextsAtTheirFirstNul ) {
    EXPECT_EQ( surveyOf( matchTable( "t" ).with( "/name", R"("ab\u0000c")" ) ).name, "ab" );
}

/// Path, stage, its text, type, size.
std::vector<String> textsOf( std::vector<Context::SurveyedStageTable> const& stageTables ) {
    std::vector<String> texts;
    for( auto const& table : stageTables )
        texts.push_back( table.path + ' ' + ( table.stage ? std::to_string( *table.stage ) : "none" ) + ' ' +
                         table.stageText.value_or( "none" ) + ' ' + table.type + ' ' +
                         ( table.size ? std::to_string( *table.size ) : "none" ) );
    return texts;
}

TEST_F( Survey, HasTheStageTablesOfATableOfItsMatchAttributesAndOfAllUnits ) {
    StageTable const one = StageTable( "a" ).number( 3 ).size( 9 );
    StageTable const two = StageTable( "b" ).number( -1 ).without( "/size" );
    EXPECT_THAT( textsOf( surveyOf( Support::meterTable( "m" ).stages( { one, two } ) ).stageTables ),
                 ElementsAre( "stage_tables/0 3 3 a 9", "stage_tables/1 -1 -1 b none" ) );
    EXPECT_THAT( textsOf( surveyOf( matchTable( "t" ).stages( { one } ) ).stageTables ),
                 ElementsAre( "match_attributes/stage_tables/0 3 3 a 9" ) );
    EXPECT_THAT( textsOf( surveyOf( matchTable( "t" ).units( { { one }, {}, { two, one } } ) ).stageTables ),
                 ElementsAre( "match_attributes/units/0/match_attributes/stage_tables/0 3 3 a 9",
                              "match_attributes/units/2/match_attributes/stage_tables/0 -1 -1 b none",
                              "match_attributes/units/2/match_attributes/stage_tables/1 3 3 a 9" ) );
    EXPECT_THAT( surveyOf( Support::meterTable( "m" ).stages( {} ) ).stageTables, IsEmpty() );
}

TEST_F( Survey, SaysHowAStageNumberIsWrittenThatIsNone ) {
    String texts;
    for( char const* const number : { "1.5", "\"x\"", "null", "true", "[]", "18446744073709551615" } ) {
        auto const table =
            surveyOf( Support::meterTable( "m" ).with( "/stage_tables/0/stage_number", number ) );
        EXPECT_EQ( table.stageTables.at( 0 ).stage, std::nullopt ) << number;
        texts += *table.stageTables[ 0 ].stageText + ' ';
    }
    EXPECT_EQ( texts, "1.5 \"x\" null true  18446744073709551615 " );
    auto const without = surveyOf( Support::meterTable( "m" ).without( "/stage_tables/0/stage_number" ) );
    EXPECT_EQ( without.stageTables.at( 0 ).stageText, std::nullopt );
}

TEST_F( Survey, HasReferencesAndActionsWithHandlesAsTheModelHasThem ) {
    SurveyedTable const table = surveyOf( matchTable( "t" )
                                              .selection( "s" )
                                              .actionData( "d" )
                                              .stateful( "r" )
                                              .meter( "m" )
                                              .meter( "w" )
                                              .with( "/meter_table_refs/1/handle", "null" )
                                              .statistics( "c" )
                                              .action( "a" )
                                              .with( "/actions/0/handle", "\"x\"" ),
                                          inPipe3 );
    std::vector<String> references;
    for( auto const& reference : table.references ) {
        references.push_back( reference.list );
        EXPECT_EQ( reference.handle >> 28, 3 );
    }
    EXPECT_THAT( references, ElementsAre( "statistics_table_refs", "meter_table_refs", "stateful_table_refs",
                                          "action_data_table_refs", "selection_table_refs" ) );
    EXPECT_EQ( table.references.at( 1 ).handle, 0x30000000 | handleOf( "m" ) );
    ASSERT_EQ( table.actions.size(), 2 );
    EXPECT_EQ( table.actions[ 0 ].name, "NoAction" );
    EXPECT_EQ( table.actions[ 0 ].handle, std::nullopt );
    EXPECT_EQ( table.actions[ 1 ].name, "a" );
    EXPECT_THAT( table.actions[ 1 ].handle, Optional( 0x30000000 | handleOf( "a" ) ) );
}

TEST_F( Survey, SaysWhichMatchTablesTheModelLeavesOut ) {
    auto const isOmitted = []( Table const& table ) { return surveyOf( table ).isOmitted; };
    EXPECT_FALSE( isOmitted( matchTable( "t" ) ) );
    EXPECT_FALSE( isOmitted( matchTable( "t" ).with( "/static_entries", "[]" ) ) );
    EXPECT_TRUE( isOmitted( matchTable( "t" ).with( "/static_entries", "[{}]" ) ) );
    EXPECT_TRUE( isOmitted( matchTable( "t" ).controllable( false ) ) );
    EXPECT_FALSE(
        isOmitted( Support::meterTable( "t" ).controllable( false ).with( "/static_entries", "[1]" ) ) );
    SurveyedTable const both =
        surveyOf( matchTable( "t" ).controllable( false ).with( "/static_entries", "[[],{}]" ) );
    EXPECT_FALSE( both.isControllable );
    EXPECT_EQ( both.staticEntries, 2 );
    EXPECT_TRUE( surveyOf( matchTable( "t" ).with( "/is_resource_controllable", "0" ) ).isControllable );
}

TEST_F( Survey, HasLearnQuantasHeadersAndHashes ) {
    FileSurvey const survey =
        surveyOf( ContextBuilder()
                      .learnQuanta( "q" )
                      .learnQuanta( "r" )
                      .learnQuanta( "s" )
                      .without( "/learn_quanta/0/lq_cfg_type" )
                      .flexibleHeader( "h", 112 )
                      .with( "/flexible_headers/0/fields/-", R"({"slice":{"bit_width":8}})" )
                      .dynamicHash( "d", { "f" } ),
                  inPipe3 );
    ASSERT_EQ( survey.learnQuantas.size(), 3 );
    EXPECT_EQ( survey.learnQuantas[ 0 ].name, "q" );
    EXPECT_THAT( survey.learnQuantas[ 0 ].handle, Optional( 0x30000000 | handleOf( "q" ) ) );
    EXPECT_TRUE( survey.learnQuantas[ 0 ].isOmitted );
    EXPECT_EQ( survey.learnQuantas[ 0 ].record, std::nullopt );
    EXPECT_EQ( survey.learnQuantas[ 2 ].index, 2 );
    EXPECT_FALSE( survey.learnQuantas[ 2 ].isOmitted );
    EXPECT_THAT( survey.learnQuantas[ 2 ].record, Optional( 1 ) );
    ASSERT_EQ( survey.headers.size(), 1 );
    EXPECT_EQ( survey.headers[ 0 ].name, "h" );
    EXPECT_EQ( survey.headers[ 0 ].bits, 120 );
    EXPECT_EQ( survey.headers[ 0 ].handle, std::nullopt );
    ASSERT_EQ( survey.hashes.size(), 1 );
    EXPECT_EQ( survey.hashes[ 0 ].name, "d" );
    EXPECT_THAT( survey.hashes[ 0 ].handle, Optional( 0x30000000 | handleOf( "d" ) ) );
}

TEST_F( Survey, HasThePhvBytesOfEachStageAndDirection ) {
    FileSurvey const survey =
        surveyOf( ContextBuilder()
                      .phvStage( "b", 4 )
                      .with( "/phv_allocation/0/egress/0/records/0/is_pov", "true" )
                      .phvStage( "b", 2 )
                      .with( "/phv_allocation/1/ingress/0/records/-",
                             R"({"is_pov":false,"field_name":"a","field_width":1})" )
                      .with( "/phv_allocation/1/ingress/-",
                             R"({"records":[{"is_pov":false,"field_name":"b","field_width":34}]})" ) );
    std::vector<String> fields;
    for( auto const& field : survey.phvFields )
        fields.push_back( std::to_string( field.element ) + ( field.ingress ? " in " : " out " ) +
                          field.name + ' ' + std::to_string( field.bytes ) );
    EXPECT_THAT( fields, ElementsAre( "0 in b 4", "1 in a 1", "1 in b 34", "1 out b 2" ) );
}

/// Table, member and word.
std::vector<String> unknownWordsOf( FileSurvey const& survey ) {
    std::vector<String> words;
    for( auto const& word : survey.unknownWords )
        words.push_back( std::to_string( word.table ) + ' ' + word.member + ' ' + word.word );
    return words;
}

TEST_F( Survey, HasTheWordsThatNoPassKnows ) {
    EXPECT_THAT( unknownWordsOf( surveyOf( contextOfEveryPass() ) ), IsEmpty() );
    auto const survey = surveyOf(
        ContextBuilder()
            .table( Support::conditionTable( "if" ).with( "/direction", "\"up\"" ) )
            .table( matchTable( "a" ).with( "/direction", "\"up\"" ).with( "/how_referenced", "\"by\"" ) )
            .table( Support::statisticsTable( "b" )
                        .with( "/statistics_type", "\"bits\"" )
                        .with( "/how_referenced", "\"by\"" ) )
            .table( Support::meterTable( "c" ).with( "/statistics_type", "\"bits\"" ).referenced( "by" ) )
            .table( Support::statefulTable( "d" ).referenced( "" ) )
            .table( matchTable( "e" ).with( "/table_type", "\"algorithm\"" ) ) );
    EXPECT_THAT( unknownWordsOf( survey ),
                 ElementsAre( "1 direction up", "2 statistics_type bits", "2 how_referenced by",
                              "3 how_referenced by", "4 how_referenced ", "5 table_type algorithm" ) );
}

TEST_F( Survey, HasTheSizesThatTheModelTruncates ) {
    auto const at = []( std::int64_t stage ) {
        return Support::meterTable( "m" + std::to_string( stage ) )
            .stages( { StageTable( "meter" ).number( stage ) } );
    };
    auto const survey =
        surveyOf( ContextBuilder()
                      .table( at( 255 ) )
                      .table( at( 256 + 7 ) )
                      .table( at( -1 ) )
                      .table( Support::conditionTable( "if" ).stages( { StageTable().number( 256 ) } ) )
                      .flexibleHeader( "fits", 65528 )
                      .flexibleHeader( "wraps", 65544 )
                      .phvStage( "31", 31 )
                      .phvStage( "33", 33 ) );
    std::vector<String> sizes;
    for( TruncatedSize const& one : survey.truncatedSizes )
        sizes.push_back( std::to_string( static_cast<int>( one.kind ) ) + ' ' + std::to_string( one.index ) +
                         ' ' + one.name + ' ' + std::to_string( one.size ) + " is " +
                         std::to_string( one.kept ) );
    EXPECT_THAT( sizes, ElementsAre( "0 1 m263 263 is 7", "0 2 m-1 -1 is 255", "2 1 33 33 is 1",
                                     "3 1 33 33 is 1", "1 1 wraps 65544 is 8" ) );
}

} // namespace
} // namespace BfResourceInfo
