#include "tests/cli/Inputs.h"

#include "cli/Answers.h"
#include "cli/Utf8.h"

#include <gmock/gmock.h>

namespace {

using Bfri::ExitStatus;
using Bfri::Format;
using Bfri::Look;
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

class Stages : public InFolder {
  protected:
    void place( String const& name, BfResourceType type, bool ingress, U32 first, U32 stages, U32 size = 64,
                U32 handle = 1 ) {
        model->parser()->bfResourcesPush(
            { name, handle, static_cast<U32>( type ), size, ingress, stages, first } );
    }

    void placeSome() {
        place( "pipe.b", BfResourceType::hashMatch, true, 1, 2 );
        place( "pipe.a", BfResourceType::hashMatch, true, 1, 1, 1024 );
        place( "pipe.lpm", BfResourceType::algorithmicTcamMatch, true, 0, 4, 2 );
        place( "pipe.out", BfResourceType::ternaryMatch, false, 3, 1 );
    }

    void placeMany( U32 stages ) {
        for( U32 i = 0; i < 20 * stages; ++i )
            place( "pipe.SwitchIngress.some_control.table_" + std::to_string( i ),
                   i % 3 == 0 ? BfResourceType::algorithmicTcamMatch : BfResourceType::statistics, i % 2 == 0,
                   i % stages, 1 + i % 2, 1000 * i );
    }

    String answer( Look const& look = {}, std::map<String, String> const& options = {} ) {
        std::ostringstream out;
        std::ostringstream err;
        Bfri::Request request;
        request.words = { "switch.conf" };
        request.options = options;
        Bfri::stages( *model, request, { out, err, look } );
        EXPECT_EQ( err.str(), "" );
        return out.str();
    }

    Zel::Ptr<Bfri::Model> const model = emptyModel();
};

TEST_F( Stages, CountsWhatStartsAndWhatGoesOnByDirectionAndType ) {
    placeSome();
    EXPECT_EQ( answer(), R"(4 resources in stages 0 to 3; the fullest is 1 with 3

STAGE                     ALL    0    1    2    3
ingress
  hash_match                2    .    2   +1    .
  algorithmic_tcam_match    1    1   +1   +1   +1
egress
  ternary_match             1    .    .    .    1
all                         4    1  2+1   +2  1+1
                                 -    @    *    *

2+1: two start in the stage, and one goes on from the stage before
spans are counted in stage tables: a table of several units may end earlier
)" );
}

TEST_F( Stages, OfOneStageTableEachNeedNoWordOnSpans ) {
    place( "a", BfResourceType::hashMatch, true, 1, 1 );
    EXPECT_THAT( answer(), Not( HasSubstr( "spans" ) ) );
    EXPECT_THAT( answer( {}, { { "--list", "" } } ), EndsWith( "a\n" ) );
    place( "b", BfResourceType::hashMatch, true, 1, 2 );
    for( char const* const option : { "--list", "--no" } )
        EXPECT_THAT( answer( {}, { { option, "" } } ), EndsWith( "may end earlier\n" ) );
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
    EXPECT_EQ( answer( {}, { { "--list", "" } } ), R"(4 resources in stages 0 to 3; the fullest is 1 with 3

SIZE    0  1  2  3  NAME
ingress hash_match: 2
1024    .###  .  .  pipe.a
  64    .######  .  pipe.b
ingress algorithmic_tcam_match: 1
   2  ############  pipe.lpm
egress ternary_match: 1
  64    .  .  .###  pipe.out

spans are counted in stage tables: a table of several units may end earlier
)" );
}

TEST_F( Stages, OfOneNumberListsTheResourcesInItAlone ) {
    placeSome();
    EXPECT_EQ( answer( {}, { { "--stage", "2" } } ), R"(stage 2: 2 of 4 resources

SIZE    0  1  2  3  NAME
ingress hash_match: 1
  64    .######  .  pipe.b
ingress algorithmic_tcam_match: 1
   2  ############  pipe.lpm

spans are counted in stage tables: a table of several units may end earlier
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
    EXPECT_EQ( failure(), "no stage 4; no resource is placed" );
    placeSome();
    EXPECT_EQ( failure(), "no stage 4; the stages are 0 to 3" );
    auto& parser = *model->parser();
    parser.bfrtConfigIs( "bfrt.json" );
    place( "other", BfResourceType::hashMatch, true, 4, 1, 64, 0x20000001 );
    EXPECT_THAT( failure(), HasSubstr( "stage 4: 0 of 4 resources\n" ) );
    EXPECT_THAT( failure(), HasSubstr( "stage 4: 1 of 1 resource\n" ) );
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
                       "--stage takes the number of a stage, not '" + Bfri::shown( word ) + "'" );
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
    auto& parser = *model->parser();
    parser.contextFileIs( BfResourceInfo::BfPipeMask( 3 ), "a.json" );
    parser.contextFileIs( BfResourceInfo::BfPipeMask( 12 ), "b.json" );
    place( "a", BfResourceType::hashMatch, true, 1, 1, 64, 0x00000001 );
    place( "b", BfResourceType::hashMatch, true, 2, 1, 64, 0x20000001 );
    EXPECT_THAT( answer(), HasSubstr( "pipes 0 1: a.json\npipes 2 3: b.json\n"
                                      "one map for all of these, as their handles do not tell them apart\n"
                                      "2 resources in stages 0 to 2; the fullest is 1 with 1\n" ) );
    parser.bfrtConfigIs( "bfrt.json" );
    String const text = answer();
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
    auto const json = jsonAnswerOf( "stages", *model );
    EXPECT_THAT( memberNames( json ), ElementsAre( "format", "pipelines" ) );
    auto const& pipeline = json[ "pipelines" ][ 0 ];
    EXPECT_THAT( memberNames( pipeline ), ElementsAre( "contextFile", "stages", "bfResources" ) );
    ASSERT_EQ( pipeline[ "stages" ].Size(), 4U );
    EXPECT_EQ(
        compact( pipeline[ "stages" ][ 1 ] ),
        R"({"stage":1,"starting":2,"spanning":3,"entries":1088,"groups":[)"
        R"({"ingress":true,"type":2,"typeName":"hash_match","starting":2,"spanning":2,"entries":1088},)"
        R"({"ingress":true,"type":3,"typeName":"algorithmic_tcam_match","starting":0,"spanning":1,)"
        R"("entries":0}]})" );
    EXPECT_EQ(
        compact( pipeline[ "bfResources" ][ 0 ] ),
        R"({"name":"pipe.a","handle":1,"type":2,"typeName":"hash_match","size":1024,"ingress":true,"stages":1,"stageStart":1})" );
}

TEST_F( Stages, AsJsonOfOneNumberHaveThatAlone ) {
    placeSome();
    std::ostringstream out;
    std::ostringstream err;
    Bfri::stages( *model, { nullptr, { "switch.conf" }, Format::json, {}, { { "--stage", "3" } } },
                  { out, err } );
    auto const json = parsed( out.str() );
    auto const& pipeline = json[ "pipelines" ][ 0 ];
    ASSERT_EQ( pipeline[ "stages" ].Size(), 1U );
    EXPECT_EQ( pipeline[ "stages" ][ 0 ][ "stage" ].GetUint(), 3U );
    EXPECT_EQ( pipeline[ "bfResources" ].Size(), 2U );
}

TEST_F( Stages, OfAnEmptyModelAreNone ) {
    EXPECT_EQ( answer(), "no resource is placed\n" );
    EXPECT_EQ( compact( jsonAnswerOf( "stages", *model )[ "pipelines" ] ), "[]" );
    model->parser()->contextFileIs( BfResourceInfo::BfPipeMask( 3 ), "a.json" );
    EXPECT_EQ( answer(), "pipes 0 1: a.json\nno resource is placed\n" );
    EXPECT_EQ( answer( {}, { { "--list", "" } } ), "pipes 0 1: a.json\nno resource is placed\n" );
}

TEST_F( Stages, WithNumbersThatNoChipHasAreThoseThatAreTaken ) {
    place( "first", BfResourceType::hashMatch, true, 1, 1 );
    place( "long", BfResourceType::hashMatch, true, 0xFFFFFFFE, 9, 0xFFFFFFFF );
    place( "late", BfResourceType::hashMatch, true, 0xFFFFFFFE, 1, 2 );
    EXPECT_THAT( answer(), HasSubstr( R"(
STAGE                ALL           1  4294967294  4294967295
ingress
  hash_match           3           1           2          +1
)" ) );
    EXPECT_THAT( answer( {}, { { "--list", "" } } ),
                 HasSubstr( "            .######################  long\n" ) );
    auto const stages = jsonAnswerOf( "stages", *model );
    auto const& first = stages[ "pipelines" ][ 0 ][ "stages" ][ 1 ];
    EXPECT_EQ( first[ "stage" ].GetUint(), 0xFFFFFFFEU );
    EXPECT_EQ( first[ "entries" ].GetUint(), 0xFFFFFFFFU ); // a sum that has no more bits
}

} // namespace
