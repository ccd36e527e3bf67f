#include "tests/cli/Inputs.h"

#include "cli/commands/Answers.h"
#include "cli/terminal/Characters.h"

#include <gmock/gmock.h>

namespace {

using Bfri::ExitStatus;
using Bfri::Format;
using Bfri::TerminalStyle;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::vector<String> linesOf( String const& text ) {
    std::vector<String> lines;
    std::istringstream in( text );
    for( String line; std::getline( in, line ); )
        lines.push_back( line );
    return lines;
}

String withoutColours( String const& text ) {
    String plain;
    for( std::size_t i = 0; i < text.size(); ++i ) {
        if( text[ i ] == '\x1b' )
            i = text.find( 'm', i );
        else
            plain += text[ i ];
    }
    return plain;
}

class Stages : public InFolder {
  protected:
    using Numbers = std::vector<std::int64_t>;

    static Support::Table tableIn( String const& name, char const* type, bool ingress, Numbers const& stages,
                                   U32 size = 64 ) {
        std::vector<Support::StageTable> stageTables;
        for( std::int64_t const stage : stages )
            stageTables.push_back( Support::StageTable( type ).number( stage ) );
        return Support::matchTable( name )
            .stages( stageTables )
            .size( size )
            .with( "/direction", ingress ? "\"ingress\"" : "\"egress\"" );
    }
    void place( String const& name, char const* type, bool ingress, Numbers const& stages, U32 size = 64 ) {
        context.table( tableIn( name, type, ingress, stages, size ) );
    }

    void placeSome() {
        place( "pipe.b", "hash_match", true, { 1, 2 } );
        place( "pipe.a", "hash_match", true, { 1 }, 1024 );
        place( "pipe.lpm", "algorithmic_tcam_match", true, { 0, 1, 2, 3 }, 2 );
        place( "pipe.out", "ternary_match", false, { 3 } );
    }

    void placeMany( U32 stages ) {
        for( U32 i = 0; i < 20 * stages; ++i )
            place( "pipe.SwitchIngress.some_control.table_" + std::to_string( i ),
                   i % 3 == 0 ? "algorithmic_tcam_match" : "statistics", i % 2 == 0,
                   i % 2 == 0 ? Numbers{ i % stages } : Numbers{ i % stages, i % stages + 1 }, 1000 * i );
    }

    String answer( TerminalStyle const& look = {}, std::map<String, String> const& options = {} ) {
        return answerOf( *modelOf( context ), look, options );
    }
    static String answerOf( Bfri::Configuration const& configuration, TerminalStyle const& look = {},
                            std::map<String, String> const& options = {} ) {
        std::ostringstream out;
        std::ostringstream err;
        Bfri::Request request;
        request.words = { "switch.conf" };
        request.options = options;
        Bfri::stages( configuration, request, { out, err, look } );
        EXPECT_EQ( err.str(), "" );
        return out.str();
    }
    /// A switch of two pipelines, with "a" in stage 1 and "b" in stage 2 under the same handle.
    static void writeTwo( bool withRuntimeConfig ) {
        Support::DeviceBuilder device;
        if( withRuntimeConfig )
            device.runtimeConfig( "bfrt.json" );
        for( auto const& [ name, stage ] : { std::pair( "a", 1 ), std::pair( "b", 2 ) } )
            writeFile( String( name ) + ".json",
                       Support::ContextBuilder()
                           .table( tableIn( name, "hash_match", true, { stage } ).handle( 1 ) )
                           .text() );
        device.pipeline( "a.json", { 0, 1 } ).pipeline( "b.json", { 2, 3 } );
        writeFile( "switch.conf", Support::SwitchConfBuilder().device( device ).text() );
    }
    rapidjson::Document json() { return jsonAnswerOf( "stages", *modelOf( context ) ); }

    Support::ContextBuilder context;
};

TEST_F( Stages, CountsWhatStartsAndWhatGoesOnByDirectionAndType ) {
    placeSome();
    EXPECT_EQ( answer(), R"(pipes 0 1: context.json
4 resources in stages 0 to 3; the fullest is 1 with 3

STAGE                     ALL    0    1    2    3
ingress
  hash_match                2    .    2   +1    .
  algorithmic_tcam_match    1    1   +1   +1   +1
egress
  ternary_match             1    .    .    .    1
all                         4    1  2+1   +2  1+1
                                 -    @    *    *

2+1: two start in the stage, and one goes on from an earlier one
)" );
}

// What the model takes for stages in a row.

TEST_F( Stages, AreThoseOfTheContextFile ) {
    using Support::StageTable;
    auto const in = []( std::int64_t stage ) { return StageTable( "hash_match" ).number( stage ); };
    auto const unitTable = [] {
        return Support::matchTable( "t" ).matchType( "algorithmic_tcam" ).partitions( 1 );
    };
    struct {
        char const* what;
        Support::Table table;
        Numbers stages;
    } const rows[] = {
        { "one", tableIn( "t", "hash_match", true, { 3 } ), { 3 } },
        { "several in one", tableIn( "t", "hash_match", true, { 3, 3, 4 } ), { 3, 4 } },
        { "a gap", tableIn( "t", "hash_match", true, { 1, 5 } ), { 1, 5 } },
        { "backwards", tableIn( "t", "hash_match", true, { 5, 4 } ), { 4, 5 } },
        { "units", unitTable().units( { { in( 5 ), in( 6 ) }, { in( 5 ) }, {} } ), { 5, 6 } },
        { "units and others beside them",
          Support::matchTable( "t" )
              .units( { { in( 5 ) } } )
              .with( "/match_attributes/stage_tables", R"([ { "stage_number": 9 } ])" ),
          { 5 } },
        { "beside match attributes",
          Support::statisticsTable( "t" ).stages( { in( 2 ), in( 7 ) } ),
          { 2, 7 } },
        { "numbers elsewhere",
          Support::matchTable( "t" )
              .stages(
                  { in( 2 ).with( "/inner", R"({ "stage_number": 8, "stage_tables": [ "]\\\"}", 1 ] })" ) } )
              .with( "/stage_number", "9" )
              .with( "/handles", R"([ { "handle": 5 } ])" ),
          { 2 } },
        { "a member twice",
          Support::Table( Support::JsonTree( tableIn( "t", "hash_match", true, { 3 } ).tree() )
                              .withFirst( "/match_attributes/stage_tables/0/stage_number", "7" ) ),
          { 7 } },
        { "a name with an escape", tableIn( "pipe.\"t\"\\", "hash_match", true, { 6, 8 } ), { 6, 8 } },
    };
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.what );
        auto const conditionToo = Support::ContextBuilder()
                                      .table( row.table )
                                      .table( Support::conditionTable( "c" )
                                                  .handle( Support::handleOf( "t" ) )
                                                  .with( "/stage_tables", R"([ { "stage_number": 11 } ])" ) );
        auto const shown = jsonAnswerOf( "stages", *modelOf( conditionToo ) );
        auto const& pipeline = shown[ "pipelines" ][ 0 ];
        ASSERT_EQ( pipeline[ "bfResources" ].Size(), 1U );
        ASSERT_TRUE( pipeline[ "bfResources" ][ 0 ][ "stageNumbers" ].IsArray() );
        Numbers stages;
        for( auto const& number : pipeline[ "bfResources" ][ 0 ][ "stageNumbers" ].GetArray() )
            stages.push_back( number.GetInt64() );
        EXPECT_EQ( stages, row.stages );
        for( auto const& stage : pipeline[ "stages" ].GetArray() ) {
            bool const taken = std::count( stages.begin(), stages.end(), stage[ "stage" ].GetInt64() ) > 0;
            EXPECT_EQ( stage[ "spanning" ].GetUint(), taken ? 1U : 0U ) << stage[ "stage" ].GetUint();
        }
    }
}

TEST_F( Stages, WithAGapAreNotDrawnInIt ) {
    place( "pipe.gap", "hash_match", true, { 0, 2 } );
    EXPECT_EQ( answer(), R"(pipes 0 1: context.json
1 resource in stages 0 to 2; the fullest are 0 and 2 with 1 each

STAGE         ALL    0    1    2
ingress
  hash_match    1    1    .   +1
all             1    1    .   +1
                     @         @

2+1: two start in the stage, and one goes on from an earlier one
)" );
    EXPECT_THAT( answer( {}, { { "--list", "" } } ), HasSubstr( "  64  ###  .###  pipe.gap\n" ) );
    EXPECT_THAT( answer( {}, { { "--stage", "1" } } ), EndsWith( "\nstage 1: 0 of 1 resource\n" ) );
}

TEST_F( Stages, OfOneHandleTwiceAreToldApartByTheirOrder ) {
    context.table( tableIn( "t", "hash_match", true, { 1, 4 } ).handle( 5 ) )
        .table( tableIn( "t", "hash_match", true, { 1, 3 } ).handle( 5 ) )
        .table( tableIn( "u", "hash_match", true, { 1, 2 } ).handle( 5 ) );
    auto const text = answer( {}, { { "--list", "" } } );
    EXPECT_THAT( text, HasSubstr( "  64    .######  .  .  u\n" ) );
    EXPECT_THAT( text, HasSubstr( "  64    .###  .  .###  t\n" ) );
    EXPECT_THAT( text, HasSubstr( "  64    .###  .###  .  t\n" ) );
}

TEST_F( Stages, ThatAreNoNumbersOf32BitsAreNotGuessed ) {
    // A number beyond 32 bits is no stage, and a text is none.
    auto text = tableIn( "pipe.a", "hash_match", true, { 1, 2 } );
    text.with( "/match_attributes/stage_tables/1/stage_number", "\"2\"" );
    auto const model = modelOf( Support::ContextBuilder().table( text ) );
    EXPECT_EQ( answerOf( *model ), "pipes 0 1: context.json\nno resource has stages that are known\n"
                                   "not on the map, as the context file does not tell all of their "
                                   "stages: 1 resource\n  pipe.a\n" );
    auto const shown = jsonAnswerOf( "stages", *model );
    EXPECT_TRUE( shown[ "pipelines" ][ 0 ][ "bfResources" ][ 0 ][ "stageNumbers" ].IsNull() );
    EXPECT_EQ( shown[ "pipelines" ][ 0 ][ "stages" ].Size(), 0U );
    auto huge = tableIn( "pipe.a", "hash_match", true, { 1 } );
    huge.with( "/match_attributes/stage_tables/0/stage_number", "4294967297" );
    EXPECT_THAT( answerOf( *modelOf( Support::ContextBuilder().table( huge ) ) ),
                 HasSubstr( "not on the map, " ) );
}

TEST_F( Stages, AreDrawnInUtf8WhereTheTerminalHasIt ) {
    placeSome();
    String const text = answer( { .utf8 = true } );
    EXPECT_THAT( text, HasSubstr( "  hash_match                2    ·    2   +1    ·\n" ) );
    EXPECT_THAT( text, HasSubstr( "                                 ▃    █    ▆    ▆\n" ) );
    EXPECT_THAT( answer( { .utf8 = true }, { { "--list", "" } } ),
                 HasSubstr( "  64    ·██████  ·  pipe.b\n" ) );
}

TEST_F( Stages, AreListedWithABarForEachResource ) {
    placeSome();
    EXPECT_EQ( answer( {}, { { "--list", "" } } ), R"(pipes 0 1: context.json
4 resources in stages 0 to 3; the fullest is 1 with 3

SIZE    0  1  2  3  NAME
ingress hash_match: 2
1024    .###  .  .  pipe.a
  64    .######  .  pipe.b
ingress algorithmic_tcam_match: 1
   2  ############  pipe.lpm
egress ternary_match: 1
  64    .  .  .###  pipe.out
)" );
}

TEST_F( Stages, OfOneNumberListsTheResourcesInItAlone ) {
    placeSome();
    EXPECT_EQ( answer( {}, { { "--stage", "2" }, { "--list", "" } } ), R"(pipes 0 1: context.json
stage 2: 2 of 4 resources; 2048 entries, 25% of all

SIZE    0  1  2  3  NAME
ingress hash_match: 1
  64    .######  .  pipe.b
ingress algorithmic_tcam_match: 1
   2  ############  pipe.lpm
)" );
}

TEST_F( Stages, OfANumberThatNoFileHasAreNotFound ) {
    auto const failure = [ & ] {
        try {
            return answer( {}, { { "--stage", "4" } } );
        } catch( Bfri::Failure const& thrown ) {
            EXPECT_EQ( thrown.status, ExitStatus::no );
            return String( thrown.what() );
        }
    };
    EXPECT_EQ( failure(), "no stage 4; no resource has stages that are known" );
    placeSome();
    EXPECT_EQ( failure(), "no stage 4; the stages are 0 to 3" );
    writeTwo( true );
    auto const model = loaded();
    String const text = answerOf( *model, {}, { { "--stage", "2" } } );
    EXPECT_THAT( text, HasSubstr( "stage 2: 0 of 1 resource\n" ) );
    EXPECT_THAT( text, HasSubstr( "stage 2: 1 of 1 resource; 1024 entries, 100% of all\n" ) );
}

TEST_F( Stages, HaveNumbers ) {
    placeSome();
    for( char const* const word : { "", "x", "-1", "1x", "4294967296", "\x1b" } ) {
        try {
            answer( {}, { { "--stage", word } } );
            ADD_FAILURE() << word;
        } catch( Bfri::Failure const& failure ) {
            EXPECT_EQ( failure.status, ExitStatus::usage );
            EXPECT_EQ( failure.what(),
                       "--stage takes the number of a stage, not '" + Bfri::escapeForTerminal( word ) + "'" );
        }
    }
}

/// The grid's numbers of stages, however many blocks it takes.
std::vector<String> stagesInGrid( String const& text, int& blocks ) {
    std::vector<String> stages;
    for( String const& line : linesOf( text ) ) {
        if( !line.starts_with( "STAGE" ) )
            continue;
        ++blocks;
        std::istringstream words( line.substr( 5 ) );
        for( String word; words >> word; )
            stages.push_back( word );
    }
    return stages;
}

TEST_F( Stages, FitTheTerminal ) {
    placeMany( 12 );
    struct {
        std::size_t columns;
        int blocks;
    } const rows[] = { { 0, 1 },  { 200, 1 }, { 110, 1 }, { 107, 2 },
                       { 80, 2 }, { 60, 3 },  { 35, 14 }, { 10, 14 } };
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.columns );
        String const text = answer( { .columns = row.columns } );
        int blocks = 0;
        EXPECT_THAT( stagesInGrid( text, blocks ), ElementsAre( "ALL", "0", "1", "2", "3", "4", "5", "6", "7",
                                                                "8", "9", "10", "11", "12" ) );
        EXPECT_EQ( blocks, row.blocks );
        for( String const& line : linesOf( text.substr( text.find( "\n\n" ) ) ) ) {
            bool const hasRoom = row.columns >= 35;
            EXPECT_TRUE( !hasRoom || line.size() <= row.columns ) << line;
        }
    }
}

TEST_F( Stages, InAListKeepTheEndOfNamesWhereTheTerminalIsNarrow ) {
    placeMany( 12 );
    for( std::size_t const columns : { 120U, 80U, 60U, 40U } ) {
        SCOPED_TRACE( columns );
        for( bool const utf8 : { false, true } ) {
            auto const lines =
                linesOf( answer( { .columns = columns, .utf8 = utf8 }, { { "--list", "" } } ) );
            for( auto line = lines.begin() + 2; line != lines.end(); ++line )
                EXPECT_LE( Bfri::width( *line ), columns ) << *line;
        }
    }
    String const narrow = answer( { .columns = 60 }, { { "--list", "" } } );
    EXPECT_THAT( narrow, HasSubstr( "  SIZE  0123456789012  NAME\n" ) );
    EXPECT_THAT( narrow, HasSubstr( "239000  ...........##  <SwitchIngress.some_control.table_239\n" ) );
}

TEST_F( Stages, OfEachContextFileHaveAMapWhereHandlesTellThemApart ) {
    writeTwo( false );
    EXPECT_THAT( answerOf( *loaded() ),
                 HasSubstr( "pipes 0 1: a.json\npipes 2 3: b.json\n"
                            "one map for all of these, as their handles do not tell them apart\n"
                            "2 resources in stages 0 to 2; the fullest are 1 and 2 with 1 each\n" ) );
    writeTwo( true );
    auto const model = loaded();
    String const text = answerOf( *model );
    EXPECT_THAT( text,
                 HasSubstr( "pipes 0 1: a.json\n1 resource in stages 0 to 1; the fullest is 1 with 1\n" ) );
    EXPECT_THAT( text, HasSubstr( "\n\npipes 2 3: b.json\n1 resource in stages 0 to 2; " ) );
    EXPECT_THAT( text, Not( HasSubstr( "one map" ) ) );
    auto const json = jsonAnswerOf( "stages", *model );
    ASSERT_EQ( json[ "pipelines" ].Size(), 2U );
    EXPECT_EQ( compact( json[ "pipelines" ][ 1 ][ "contextFile" ] ),
               R"([{"pipeMask":12,"pipes":[2,3],"path":"b.json"}])" );
    EXPECT_STREQ( json[ "pipelines" ][ 1 ][ "bfResources" ][ 0 ][ "name" ].GetString(), "b" );
}

TEST_F( Stages, AsJsonHaveWhatStartsAndSpansByDirectionAndType ) {
    placeSome();
    auto const shown = json();
    EXPECT_THAT( memberNames( shown ), ElementsAre( "format", "pipelines" ) );
    auto const& pipeline = shown[ "pipelines" ][ 0 ];
    EXPECT_THAT( memberNames( pipeline ), ElementsAre( "contextFile", "stages", "bfResources" ) );
    ASSERT_EQ( pipeline[ "stages" ].Size(), 4U );
    EXPECT_EQ( compact( pipeline[ "stages" ][ 1 ] ),
               R"({"stage":1,"starting":2,"spanning":3,"entries":3072,"stageTables":3,"stated":3,"groups":[)"
               R"({"ingress":true,"type":2,"typeName":"hash_match","starting":2,"spanning":2,"entries":2048,)"
               R"("stageTables":2,"stated":2},)"
               R"({"ingress":true,"type":3,"typeName":"algorithmic_tcam_match","starting":0,"spanning":1,)"
               R"("entries":1024,"stageTables":1,"stated":1}]})" );
    EXPECT_EQ(
        compact( pipeline[ "bfResources" ][ 0 ] ),
        R"({"name":"pipe.a","handle":)" + std::to_string( Support::handleOf( "pipe.a" ) ) +
            R"(,"type":2,"typeName":"hash_match","size":1024,"ingress":true,"stages":1,"stageStart":1,)"
            R"("stageNumbers":[1],"stageLoads":[{"stage":1,"entries":1024,"stageTables":1,"stated":1}]})" );
}

/// Stages of 4096 entries that share the same table, one of them not telling.
void placeUnstated( Support::ContextBuilder& context ) {
    context.table( Support::matchTable( "pipe.quiet" )
                       .stages( { Support::StageTable( "hash_match" ).number( 1 ).without( "/size" ),
                                  Support::StageTable( "hash_match" ).number( 2 ).size( 96 ) } ) );
}

TEST_F( Stages, AsJsonHaveNoEntriesWhereTheFileStatesNone ) {
    placeUnstated( context );
    auto const shown = json();
    auto const& stages = shown[ "pipelines" ][ 0 ][ "stages" ];
    EXPECT_TRUE( stages[ 1 ][ "entries" ].IsNull() );
    EXPECT_EQ( stages[ 1 ][ "stated" ].GetUint(), 0U );
    EXPECT_EQ( stages[ 0 ][ "entries" ].GetUint(), 0U );
    EXPECT_EQ( stages[ 2 ][ "entries" ].GetUint(), 96U );
}

TEST_F( Stages, ByEntriesShowWhatTheFileStatesAndTheShareOfAll ) {
    placeSome();
    placeUnstated( context );
    EXPECT_EQ( answer( {}, { { "--by", "entries" } } ), R"(pipes 0 1: context.json
5 resources in stages 0 to 3; the fullest is 1 with 3072 entries

STAGE                       ALL      0      1      2      3
ingress
  hash_match              3168?      .  2048?   1120      .
  algorithmic_tcam_match   4096   1024   1024   1024   1024
egress
  ternary_match            1024      .      .      .   1024
all                       8288?   1024  3072?   2144   2048
share                      100%    12%    37%    26%    25%
                                     -      @      *      *

entries: the sizes of the stage tables in each stage, as the context file states them; ?: some state none
)" );
    EXPECT_EQ( answer( {}, { { "--by", "tables" } } ), answer() );
}

TEST_F( Stages, OfOneNumberShowTheTenLargestInIt ) {
    for( U32 i = 0; i < 12; ++i )
        context.table( Support::matchTable( "t" + std::to_string( i ) )
                           .stages( { Support::StageTable( "hash_match" ).number( 0 ).size( 10 * i ),
                                      Support::StageTable( "hash_match" ).number( 1 ).size( 1000 ) } )
                           .size( 5 ) );
    auto const lines = linesOf( answer( {}, { { "--stage", "0" } } ) );
    EXPECT_THAT( lines, ElementsAre( "pipes 0 1: context.json",
                                     "stage 0: 12 of 12 resources; 660 entries, 5% of all", "",
                                     "ENTRIES  SHARE  SIZE  STAGES  TYPE                NAME",
                                     "    110  17%       5  0 1     ingress hash_match  t11", testing::_,
                                     testing::_, testing::_, testing::_, testing::_, testing::_, testing::_,
                                     testing::_, "     20  3%        5  0 1     ingress hash_match  t2",
                                     "and 2 more; --list has all" ) );
    EXPECT_THAT( answer( {}, { { "--stage", "0" }, { "--list", "" } } ), HasSubstr( "  t0\n" ) );
}

TEST_F( Stages, OfOneNumberSayWhereAResourceDoesNotStateItsEntries ) {
    placeUnstated( context );
    context.table(
        Support::matchTable( "some" ).stages( { Support::StageTable().number( 1 ).size( 7 ),
                                                Support::StageTable().number( 1 ).without( "/size" ) } ) );
    auto const text = answer( {}, { { "--stage", "1" } } );
    EXPECT_THAT( text,
                 HasSubstr( "\n7 and some not stated  100%   1024  1       ingress ternary_match  some\n" ) );
    EXPECT_THAT(
        text,
        HasSubstr( "\nnot stated             -      1024  1 2     ingress hash_match     pipe.quiet\n" ) );
}

TEST_F( Stages, AreAHeatMapWhereTheTerminalHasManyColours ) {
    placeSome();
    TerminalStyle look{ 0, true, false, true };
    String const coloured = answer( look );
    EXPECT_THAT( coloured, HasSubstr( " \x1b[38;5;16;48;5;202m   2\x1b[0m" ) ); // the hottest
    EXPECT_THAT( coloured, HasSubstr( " \x1b[38;5;16;48;5;222m  +1\x1b[0m" ) );
    EXPECT_EQ( withoutColours( coloured ), answer() );
    look.manyColors = false;
    EXPECT_EQ( answer( look ), answer() );
}

TEST_F( Stages, AsJsonOfOneNumberHaveThatAlone ) {
    placeSome();
    std::ostringstream out;
    std::ostringstream err;
    Bfri::stages( *modelOf( context ),
                  { nullptr, { "switch.conf" }, Format::json, {}, { { "--stage", "3" } } }, { out, err } );
    auto const json = parsed( out.str() );
    auto const& pipeline = json[ "pipelines" ][ 0 ];
    ASSERT_EQ( pipeline[ "stages" ].Size(), 1U );
    EXPECT_EQ( pipeline[ "stages" ][ 0 ][ "stage" ].GetUint(), 3U );
    EXPECT_EQ( pipeline[ "bfResources" ].Size(), 2U );
}

TEST_F( Stages, OfAnEmptyModelAreNone ) {
    auto const model = emptyModel();
    EXPECT_EQ( answerOf( *model ), "no resource is placed\n" );
    EXPECT_EQ( compact( jsonAnswerOf( "stages", *model )[ "pipelines" ] ), "[]" );
    EXPECT_EQ( answer(), "pipes 0 1: context.json\nno resource is placed\n" );
    EXPECT_EQ( answer( {}, { { "--list", "" } } ), "pipes 0 1: context.json\nno resource is placed\n" );
}

TEST_F( Stages, WithNumbersThatNoChipHasAreThoseThatAreTaken ) {
    place( "first", "hash_match", true, { 1 } );
    place( "long", "hash_match", true, { 0xFFFFFFFE, 0xFFFFFFFF }, 0xFFFFFFFF );
    place( "late", "hash_match", true, { -2 }, 2 );
    EXPECT_THAT( answer(), HasSubstr( R"(
STAGE         ALL    1  4294967294  4294967295
ingress
  hash_match    3    1           2          +1
)" ) );
    EXPECT_THAT( answer( {}, { { "--list", "" } } ), HasSubstr( "    .######################  long\n" ) );
    auto const stages = json();
    auto const& first = stages[ "pipelines" ][ 0 ][ "stages" ][ 1 ];
    EXPECT_EQ( first[ "stage" ].GetUint(), 0xFFFFFFFEU );
    EXPECT_EQ( first[ "entries" ].GetUint(), 2048U ); // of the stage tables, not of the resources
}

} // namespace
