// When a survey is taken, of what, and by whom; and where the model has what it surveys.

#include "tests/resourceinfo/parser/context/Surveys.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Context::FileSurvey;
using Context::SurveyedTable;
using Support::ContextBuilder;
using Support::matchTable;
using testing::IsEmpty;
using testing::Optional;
using Wanted = SurveyCollector::Wanted;

class SurveyedLoads : public testing::Test {
  protected:
    Support::TraceCollector const quiet_{ "BfResourceParser", {} };
};

/// Tables of all kinds; some are on no stage.
ContextBuilder everyKind( String const& prefix ) {
    auto const named = [ & ]( auto const& make, char const* name ) { return make( prefix + name ); };
    return ContextBuilder()
        .table( named( Support::conditionTable, "if" ) )
        .table( named( Support::wredTable, "w" ) )
        .table( named( matchTable, "a" ).action( prefix + "act" ) )
        .table( named( Support::statisticsTable, "c" ).stages( {} ) )
        .table( named( matchTable, "left out" ).controllable( false ) )
        .table( named( Support::meterTable, "m" ) )
        .table( named( Support::statefulTable, "r" ) )
        .table( named( Support::actionDataTable, "adt" ) )
        .table( named( Support::wredTable, "w2" ) )
        .table( named( matchTable, "b" ).stages( {} ).with( "/actions", "[]" ) )
        .table( named( matchTable, "d" ) )
        .table( named( Support::meterTable, "m2" ) )
        .learnQuanta( prefix + "q" );
}

/// The model's content at the positions in a survey.
void expectRecords( BfResourceParser const& parser, SurveyedTable const& table ) {
    SCOPED_TRACE( table.name );
    bool const isPlaced = !table.stageTables.empty() && table.type != "condition";
    ASSERT_EQ( table.resource.has_value(), isPlaced );
    if( isPlaced ) {
        EXPECT_EQ( parser.bfResources().at( *table.resource ).name, table.name );
    }
    bool const hasActions = table.type == "match" && !table.isOmitted;
    ASSERT_EQ( table.firstAction.has_value(), hasActions );
    for( U32 i = 0; hasActions && i < table.actions.size(); ++i ) {
        EXPECT_EQ( parser.bfActions().at( *table.firstAction + i ).name, table.actions[ i ].name );
        EXPECT_EQ( parser.bfActions().at( *table.firstAction + i ).tableName, table.name );
    }
    bool const hasRecord = !table.isOmitted && table.type != "condition" && table.type != "action_data";
    ASSERT_EQ( table.record.has_value(), hasRecord );
    if( !hasRecord )
        return;
    String const name = table.type == "match"        ? parser.bfTables().at( *table.record ).name
                        : table.type == "statistics" ? parser.bfCounters().at( *table.record ).name
                        : table.type == "stateful"   ? parser.bfRegisterInfos().at( *table.record ).name
                        : table.isWred               ? parser.bfWreds().at( *table.record ).name
                                                     : parser.bfMeters().at( *table.record ).name;
    EXPECT_EQ( name, table.name );
}

TEST_F( SurveyedLoads, SaysWhereTheModelHasTheRecordsOfEachOfSeveralFiles ) {
    auto const parser = emptyParser();
    SurveyCollector collector;
    for( char const* const prefix : { "0", "1", "2" } )
        ASSERT_EQ( conditionOfLoading( *parser, Support::TextFile( everyKind( prefix ).text() ) ), "" );
    ASSERT_EQ( collector.files.size(), 3 );
    for( FileSurvey const& file : collector.files ) {
        ASSERT_EQ( file.tables.size(), 12 );
        for( SurveyedTable const& table : file.tables )
            expectRecords( *parser, table );
        EXPECT_EQ( parser->bfLearnQuantaInfos().at( file.learnQuantas.at( 0 ).record.value() ).name,
                   file.learnQuantas[ 0 ].name );
    }
    EXPECT_THAT( collector.files[ 2 ].tables[ 1 ].record, Optional( 4 ) ) << "the fifth WRED table";
}

TEST_F( SurveyedLoads, OfAFileThatFailsHasAllButThePositionsInTheModel ) {
    FileSurvey const survey = surveyOf( everyKind( "" ).without( "/dynamic_hash_calculations" ).text() );
    EXPECT_FALSE( survey.isLoaded );
    ASSERT_EQ( survey.tables.size(), 12 );
    EXPECT_EQ( survey.tables[ 2 ].name, "a" );
    for( SurveyedTable const& table : survey.tables )
        EXPECT_FALSE( table.resource || table.record || table.firstAction ) << table.name;
    EXPECT_EQ( survey.learnQuantas.at( 0 ).record, std::nullopt );
}

TEST_F( SurveyedLoads, OfAFileThatCannotBeReadIsEmpty ) {
    for( char const* const text : { R"({"name":1,"name":2,"tables":[{"name":"t"}],)", "", "{} x" } ) {
        FileSurvey const survey = surveyOf( text, {}, Wanted::digests );
        EXPECT_FALSE( survey.isLoaded );
        EXPECT_EQ( survey.path, "context.json" );
        EXPECT_THAT( survey.tables, IsEmpty() );
        EXPECT_THAT( survey.duplicates, IsEmpty() );
        EXPECT_THAT( survey.digests, IsEmpty() );
        EXPECT_EQ( survey.digest, std::nullopt );
    }
}

TEST_F( SurveyedLoads, HasDigestsWhereTheyAreWantedAlone ) {
    String const text = everyKind( "" ).text();
    for( Wanted const wanted : { Wanted::facts, Wanted::digests } ) {
        FileSurvey const survey = surveyOf( text, {}, wanted );
        bool const isWanted = wanted == Wanted::digests;
        EXPECT_EQ( survey.digest.has_value(), isWanted );
        EXPECT_EQ( survey.digests.size(), isWanted ? 5 : 0 ); // "program_name" is one
        for( SurveyedTable const& table : survey.tables ) {
            EXPECT_EQ( table.digest.has_value(), isWanted );
            EXPECT_EQ( table.digests.empty(), !isWanted );
        }
    }
}

TEST_F( SurveyedLoads, IsTakenByTheSinkThatIsThere ) {
    auto const text = ContextBuilder().text();
    ASSERT_EQ( Context::surveySink(), nullptr );
    {
        SurveyCollector outer;
        {
            SurveyCollector inner;
            conditionOfLoading( *emptyParser(), Support::TextFile( text ) );
            EXPECT_EQ( inner.files.size(), 1 );
            EXPECT_EQ( Context::surveySink(), &inner );
        }
        EXPECT_EQ( Context::surveySink(), &outer );
        EXPECT_THAT( outer.files, IsEmpty() );
        EXPECT_EQ( Context::surveySinkIs( nullptr ), &outer );
        conditionOfLoading( *emptyParser(), Support::TextFile( text ) );
        EXPECT_THAT( outer.files, IsEmpty() );
        EXPECT_EQ( Context::surveySinkIs( &outer ), nullptr );
        conditionOfLoading( *emptyParser(), Support::TextFile( text ) );
        EXPECT_EQ( outer.files.size(), 1 );
    }
    EXPECT_EQ( Context::surveySink(), nullptr );
}

} // namespace
} // namespace BfResourceInfo
