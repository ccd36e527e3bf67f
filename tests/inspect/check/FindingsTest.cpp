#include "inspect/check/Findings.h"
#include "inspect/model/Codes.h"

#include "tests/inspect/Inputs.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace Support;

std::vector<String> codesOf( Bfri::Configuration const& configuration ) {
    std::vector<String> codes;
    for( Bfri::Finding const& finding : Bfri::findingsOf( configuration ) )
        codes.emplace_back( finding.kind->code );
    return codes;
}

struct Odd {
    char const* code;
    ContextBuilder context;
    char const* message;
};

std::ostream& operator<<( std::ostream& os, Odd const& row ) { return os << row.code; }

class ContextFinding : public InFolder, public testing::WithParamInterface<Odd> {};

TEST_P( ContextFinding, IsTheOnlyOne ) {
    auto const findings = Bfri::findingsOf( *modelOf( GetParam().context ) );
    ASSERT_EQ( findings.size(), 1U );
    EXPECT_STREQ( findings[ 0 ].kind->code, GetParam().code );
    EXPECT_THAT( findings[ 0 ].message(), HasSubstr( GetParam().message ) );
}

ContextBuilder twoTables( Support::Table const& a, Support::Table const& b ) {
    return ContextBuilder().table( a ).table( b );
}

Support::Table acl() { return Support::matchTable( "acl" ); }
/// A counter, and a table that lists it and names it in an action.
ContextBuilder countedBy( Support::Table const& counter ) {
    return twoTables( Support::matchTable( "acl" ).statistics( "c" ).action( "count", { "c" } ), counter );
}

Support::Table lpm() { return Support::matchTable( "lpm" ); }

INSTANTIATE_TEST_SUITE_P(
    Names, ContextFinding,
    testing::Values(
        Odd{ "BF201", twoTables( acl(), acl().handle( 7 ) ),
             "match table \"acl\": 2 have this name, with the handles 0x" },
        Odd{ "BF201", twoTables( lpm(), lpm() ), "2 have this name, both with the handle 0x" },
        Odd{ "BF201", twoTables( lpm(), lpm() ).table( lpm() ), "3 have this name, all with the handle 0x" },
        Odd{ "BF202", twoTables( actionDataTable( "d" ), actionDataTable( "d" ).handle( 7 ) ),
             "placed table \"d\": 2" },
        Odd{ "BF203", ContextBuilder().table( acl().action( "NoAction" ) ), "in table \"acl\"" },
        Odd{ "BF204", twoTables( acl().handle( 7 ), lpm().handle( 7 ) ),
             "(0x00000007): it is the handle of 2" },
        Odd{ "BF205",
             ContextBuilder().table(
                 acl().action( "drop" ).with( "/actions/0/handle", "9" ).with( "/actions/1/handle", "9" ) ),
             "\"NoAction\", \"drop\"" },
        Odd{ "BF208", ContextBuilder().table( Support::matchTable( "" ) ), "match table \"\" (" },
        Odd{ "BF208", ContextBuilder().table( Support::matchTable( "a\x1b" ) ), "match table \"a\x1b\" (" },
        Odd{ "BF208", ContextBuilder().table( Support::matchTable( "a\x1b,\"q\\\"" ) ),
             "match table \"a\x1b,\\\"q\\\\\\\"\" (" },
        Odd{ "BF208", ContextBuilder().learnQuanta( "\u202e" ), "can't be shown" },
        Odd{ "BF208", ContextBuilder().phvStage( "f\x7f", 8 ), "PHV field" },
        Odd{ "BF209", twoTables( acl(), Support::matchTable( "a\u200bcl" ) ),
             "differs from match table \"acl\" only in characters that nobody sees (U+200B)" },
        Odd{ "BF209", twoTables( Support::matchTable( "\u00e9" ), Support::matchTable( "e\u0301" ) ),
             "only in the normal form of its characters" },
        Odd{ "BF209", twoTables( acl(), Support::matchTable( "acl\ufe0f" ) ), "(U+FE0F)" },
        Odd{ "BF209", ContextBuilder( twoTables( acl(), lpm() ) ).flexibleHeader( "ac\u2060l", 8 ),
             "header \"ac\u2060l\": differs from match table \"acl\"" } ) );

class NamesThatLookAlike : public InFolder {};

TEST_F( NamesThatLookAlike, ByMarksOfTheDirectionAreOddAsWell ) {
    EXPECT_THAT( codesOf( *modelOf( twoTables( acl(), Support::matchTable( "\u202eacl" ) ) ) ),
                 ElementsAre( "BF208", "BF209" ) );
}

TEST_F( NamesThatLookAlike, AreNotThoseThatDifferInWhatIsSeen ) {
    EXPECT_THAT( codesOf( *modelOf( ContextBuilder()
                                        .table( acl() )
                                        .table( Support::matchTable( "acI" ) )
                                        .table( Support::matchTable( "\u00e9" ) )
                                        .table( Support::matchTable( "e" ) ) ) ),
                 IsEmpty() );
}

/// A match table in some stages.
Support::Table inStages( String const& name, std::vector<std::int64_t> const& numbers ) {
    std::vector<StageTable> stages;
    for( std::int64_t const number : numbers )
        stages.push_back( StageTable().number( number ) );
    return Support::matchTable( name ).stages( stages );
}

INSTANTIATE_TEST_SUITE_P(
    FarStages, ContextFinding,
    testing::Values( Odd{ "BF413", twoTables( inStages( "a", { 0 } ), inStages( "b", { 0, 10 } ) ),
                          "placed table \"b\"" },
                     Odd{ "BF413", twoTables( inStages( "a", { 3, 60 } ), inStages( "b", { 60 } ) ),
                          "takes stage 60, after 56 empty ones, and so does 1 more" } ) );

class StagesBeyondOthers : public InFolder {};

TEST_F( StagesBeyondOthers, AreAFindingFromNineEmptyOnesOn ) {
    EXPECT_THAT( codesOf( *modelOf( twoTables( inStages( "a", { 0 } ), inStages( "b", { 9 } ) ) ) ),
                 IsEmpty() );
    EXPECT_THAT( codesOf( *modelOf( twoTables( inStages( "a", { 20 } ), inStages( "b", { 21 } ) ) ) ),
                 IsEmpty() );
}

/// The finding of a kind in a context file, after a line end.
class PlaceOfAFinding : public InFolder {
  protected:
    Bfri::Finding findingIn( ContextBuilder const& context, std::string_view code ) {
        text = "\n" + context.text();
        writeFile( "context.json", text );
        writeSwitchConf( "context.json" );
        auto const configuration = loaded();
        for( Bfri::Finding const& finding : Bfri::findingsOf( *configuration ) ) {
            if( finding.kind->code == code )
                return finding;
        }
        throw std::runtime_error( "no such finding" );
    }
    /// Expects it where a part of the text starts.
    void expectAt( Bfri::Finding const& finding, String const& part ) {
        ASSERT_TRUE( finding.place );
        EXPECT_EQ( finding.place->file, "context.json" );
        EXPECT_EQ( finding.place->at.line, 2U );
        EXPECT_EQ( finding.place->at.column, text.find( part ) );
        EXPECT_EQ( finding.place->at.offset, text.find( part ) );
    }

    String text = {};
};

TEST_F( PlaceOfAFinding, IsWhereItsRecordStarts ) {
    auto const empty = Support::matchTable( "second" ).size( 0 );
    expectAt( findingIn( twoTables( acl(), empty ), "BF402" ), empty.text() );
    auto const again =
        acl().handle( 7 ).action( "drop" ).with( "/actions/1/handle", "1" ).with( "/actions/0/handle", "1" );
    expectAt( findingIn( twoTables( lpm(), again ), "BF205" ), again.text() );
    auto const header = findingIn( ContextBuilder().table( acl() ).flexibleHeader( "wide", 65544 ), "BF405" );
    EXPECT_EQ( header.place->at.column, text.find( '{', text.find( "\"flexible_headers\"" ) ) );
}

TEST_F( PlaceOfAFinding, OfOneNameIsThatOfItsHandle ) {
    auto const counter = statisticsTable( "acl" ).handle( 9 ).referenced( "indirect" );
    expectAt( findingIn( twoTables( acl(), counter ), "BF305" ), counter.text() );
}

TEST_F( PlaceOfAFinding, IsMissingForWhatIsNoElement ) {
    EXPECT_FALSE( findingIn( ContextBuilder().phvStage( "f\x7f", 8 ), "BF208" ).place );
}

TEST_F( PlaceOfAFinding, OfARepeatedMemberIsThatMember ) {
    text = acl().text();
    String const twice = text.substr( 0, text.size() - 1 ) + ",\"size\":7}";
    String context = ContextBuilder().table( acl() ).text();
    context.replace( context.find( acl().text() ), acl().text().size(), twice );
    writeFile( "context.json", context );
    writeSwitchConf( "context.json" );
    auto const findings = Bfri::findingsOf( *loaded() );
    ASSERT_EQ( findings.size(), 1U );
    EXPECT_STREQ( findings[ 0 ].kind->code, "BF411" );
    EXPECT_EQ( findings[ 0 ].place->at.offset, context.find( "\"size\":7" ) );
}

INSTANTIATE_TEST_SUITE_P(
    Links, ContextFinding,
    testing::Values( Odd{ "BF301", ContextBuilder().table( acl().statistics( "none" ) ),
                          "the handle of nothing" },
                     Odd{ "BF302", twoTables( acl().statistics( "d" ), actionDataTable( "d" ) ),
                          "\"d\", of another kind" },
                     Odd{ "BF303",
                          twoTables( acl().actionData( "d" ), actionDataTable( "d" ) )
                              .with( "/tables/0/action_data_table_refs/0/name", "\"e\"" ),
                          "\"e\", which is \"d\"" },
                     Odd{ "BF304",
                          twoTables( acl().action( "a", { "c" } ), lpm().action( "a", { "c" } ) )
                              .table( statisticsTable( "c" ) ),
                          "counter \"c\"" },
                     Odd{ "BF305", ContextBuilder().table( statefulTable( "r" ) ), "register \"r\"" },
                     Odd{ "BF306", twoTables( acl().statistics( "c" ), statisticsTable( "c" ) ),
                          "\"acl\" lists its handle, but no action" },
                     Odd{ "BF307",
                          twoTables( acl().meter( "m" ), lpm().meter( "m" ) )
                              .table( meterTable( "m" ).referenced( "direct" ) ),
                          "listed by several tables" },
                     Odd{ "BF308", ContextBuilder().table( acl().action( "a", { "c" } ) ),
                          "name \"c\" as a resource" } ) );

INSTANTIATE_TEST_SUITE_P(
    Sizes, ContextFinding,
    testing::Values(
        Odd{ "BF401", ContextBuilder().table( acl().stages( {} ) ), "has no stage table" },
        Odd{ "BF402", ContextBuilder().table( acl().size( 0 ) ), "has a size of 0" },
        Odd{ "BF403", ContextBuilder().table( acl().stages( { StageTable().number( 258 ) } ) ),
             "is 258, its entry by handle says 2" },
        Odd{ "BF403", ContextBuilder().table( acl().stages( { StageTable().number( 4000000000 ) } ) ),
             "is 4000000000, its entry by handle says 0" },
        Odd{ "BF403", ContextBuilder().table( acl().stages( { StageTable().number( -1 ) } ) ),
             "is -1, its entry by handle says 255" },
        Odd{ "BF405", ContextBuilder().flexibleHeader( "h", 65544 ), "65544 bits, the model says 1 bytes" },
        Odd{ "BF407", ContextBuilder().table( acl().with( "/table_type", "\"mach\"" ) ), "table \"acl\" (" },
        Odd{ "BF407", ContextBuilder().table( acl().with( "/table_type", "\"mach\"" ) ),
             "is \"mach\", which" },
        Odd{ "BF408", ContextBuilder().table( acl().with( "/direction", "\"up\"" ) ),
             "is \"up\", the model says egress" },
        Odd{ "BF409", ContextBuilder().table( acl().controllable( false ) ), "match table \"acl\" (" },
        Odd{ "BF409", ContextBuilder().table( acl().controllable( false ) ),
             "no record of it and its actions: its \"is_resource_controllable\" is false" },
        Odd{ "BF409", ContextBuilder().table( acl().with( "/static_entries", "[{\"a\":[1]}]" ) ),
             "actions: it has 1 static entry" },
        Odd{ "BF409",
             ContextBuilder().table(
                 acl().controllable( false ).with( "/static_entries", "[1,2]" ).stages( {} ) ),
             "it has 2 static entries, and its \"is_resource_controllable\" is false; it has no stage table "
             "either" },
        Odd{ "BF409", ContextBuilder().learnQuanta( "l" ).without( "/learn_quanta/0/lq_cfg_type" ),
             "learn quanta \"l\" (" },
        Odd{ "BF409", ContextBuilder().learnQuanta( "l" ).without( "/learn_quanta/0/lq_cfg_type" ),
             "the model has no record of it: it has no \"lq_cfg_type\"" },
        Odd{ "BF410", countedBy( statisticsTable( "c" ).with( "/statistics_type", "\"both\"" ) ),
             "\"both\", so that it counts neither packets nor bytes" },
        Odd{ "BF410", countedBy( statisticsTable( "c" ).referenced( "somehow" ) ),
             "its \"how_referenced\" is \"somehow\", which the model takes for \"direct\"" },
        Odd{ "BF410",
             twoTables( acl().meter( "m" ).action( "a", { "m" } ), meterTable( "m" ).referenced( "x" ) ),
             "takes for \"indirect\"" },
        Odd{ "BF410", twoTables( acl().stateful( "r" ), statefulTable( "r" ).referenced( "" ) ),
             "is \"\", which the model takes for \"direct\"" },
        Odd{ "BF406", ContextBuilder().dynamicHash( "h", { "a", "b", "a", "a" } ),
             "holds \"a\" more than once" } ) );

class Finding : public InFolder {};

TEST_F( Finding, OfALostWidthIsMadeForEachDirection ) {
    auto const findings =
        Bfri::findingsOf( *modelOf( ContextBuilder().phvStage( "f", 33 ).phvStage( "g", 31 ) ) );
    ASSERT_EQ( findings.size(), 2U );
    EXPECT_EQ( findings[ 0 ].message(), "PHV field \"f\": takes 33 bytes in ingress, the model says 1" );
    EXPECT_EQ( findings[ 1 ].message(), "PHV field \"f\": takes 33 bytes in egress, the model says 1" );
}

TEST_F( Finding, OfALostWidthIsNotMadeOfTextsAndOtherMembers ) {
    EXPECT_THAT( codesOf( *modelOf( ContextBuilder().phvStage( "f", 31 ).with(
                     "/other", R"({"phv_allocation":[{"ingress":[{"records":[{"is_pov":false,"field_name":"x",
                                "field_width":40}]}]}],"s":"a\"phv_allocation"})" ) ) ),
                 IsEmpty() );
}

TEST_F( Finding, IsNotMadeOfKnownTypesDirectionsAndNames ) {
    EXPECT_THAT( codesOf( *modelOf(
                     ContextBuilder()
                         .table( lpm().with( "/direction", "\"egress\"" ).actionData( "d" ).selection( "s" ) )
                         .table( conditionTable( "if" ).with( "/direction", "\"up\"" ) )
                         .table( actionDataTable( "d" ) )
                         .table( selectionTable( "s" ) )
                         .with( "/tables/0/inner", R"({"table_type":"x","direction":"x"})" )
                         .with( "/tables/0/actions/0/name", "\"\u00e9\"" ) ) ),
                 IsEmpty() );
}

TEST_F( Finding, IsNotMadeOfTablesThatTheModelHas ) {
    EXPECT_THAT( codesOf( *modelOf( ContextBuilder()
                                        .table( acl().with( "/static_entries", "[]" ) )
                                        .table( conditionTable( "if" )
                                                    .with( "/is_resource_controllable", "false" )
                                                    .with( "/static_entries", "[1]" ) ) ) ),
                 IsEmpty() );
}

TEST_F( Finding, OfRepeatedMembersIsMadeForThoseThatSomePassReads ) {
    String text = ContextBuilder().table( acl().handle( 7 ) ).text();
    auto const insertBehind = [ & ]( String const& front, String const& more ) {
        auto const at = text.find( front );
        ASSERT_NE( at, String::npos );
        text.insert( at + front.size(), more );
    };
    insertBehind( "{", R"("learn_quanta":[],"none":1,"none":2,)" );
    insertBehind( "\"tables\":[", R"({"table_type":"condition","name":"if","x":1,"x":2},)" );
    insertBehind( "\"handle\":7", R"(,"size":5,"handle":8,"size":6)" );
    writeSwitchConf( "context.json" );
    writeFile( "context.json", text );
    std::vector<String> messages;
    for( auto const& finding : Bfri::findingsOf( *loaded() ) )
        messages.push_back( finding.kind->code + String( " " ) + finding.message() );
    EXPECT_THAT(
        messages,
        testing::UnorderedElementsAre(
            "BF411 context file \"context.json\": has more than one \"learn_quanta\", of which the "
            "first counts",
            "BF411 match table \"acl\" (0x00000007): has more than one \"handle\", of which the first counts",
            "BF411 match table \"acl\" (0x00000007): has more than one \"size\" (3 times), of which the "
            "first counts" ) );
}

/// A member of a context file that comes twice.
struct Repeated {
    char const* pointer;
    char const* subject;
    char const* member; ///< as in the finding
};

std::ostream& operator<<( std::ostream& os, Repeated const& row ) { return os << row.pointer; }

std::vector<String> messagesOf( char const* code ) {
    std::vector<String> messages;
    for( auto const& finding : Bfri::findingsOf( *loaded() ) ) {
        if( finding.kind->code == String( code ) )
            messages.push_back( finding.message() );
    }
    return messages;
}

String repeated( String const& subject, String const& member ) {
    return subject + ": has more than one \"" + member + "\", of which the first counts";
}

class RepeatedMember : public InFolder, public testing::WithParamInterface<Repeated> {};

TEST_P( RepeatedMember, IsFoundWhereverItStands ) {
    JsonTree tree( ContextBuilder()
                       .table( acl().handle( 7 ).statistics( "c" ).action( "a", { "c" } ) )
                       .table( Support::matchTable( "wide" )
                                   .handle( 8 )
                                   .matchType( "algorithmic_tcam" )
                                   .partitions( 1 )
                                   .units( { { StageTable(), StageTable() } } ) )
                       .table( statisticsTable( "c" ).handle( 9 ) )
                       .phvStage( "f", 8 )
                       .flexibleHeader( "h", 8 )
                       .dynamicHash( "d", { "x" } )
                       .learnQuanta( "l" )
                       .tree() );
    JsonTree const value = tree.at( GetParam().pointer );
    writeSwitchConf( "context.json" );
    writeFile( "context.json", tree.withFirst( GetParam().pointer, value ).text() );
    EXPECT_THAT( messagesOf( "BF411" ), ElementsAre( repeated( GetParam().subject, GetParam().member ) ) );
}

INSTANTIATE_TEST_SUITE_P(
    InAContextFile, RepeatedMember,
    testing::Values(
        Repeated{ "/tables", "context file \"context.json\"", "tables" },
        Repeated{ "/tables/0/actions", "match table \"acl\" (0x00000007)", "actions" },
        Repeated{ "/tables/0/actions/0/name", "match table \"acl\" (0x00000007)", "actions/0/name" },
        Repeated{ "/tables/0/actions/1/indirect_resources/0/resource_name",
                  "match table \"acl\" (0x00000007)", "actions/1/indirect_resources/0/resource_name" },
        Repeated{ "/tables/0/statistics_table_refs/0/handle", "match table \"acl\" (0x00000007)",
                  "statistics_table_refs/0/handle" },
        Repeated{ "/tables/0/match_attributes/match_type", "match table \"acl\" (0x00000007)",
                  "match_attributes/match_type" },
        Repeated{ "/tables/0/match_attributes/stage_tables/0/stage_number",
                  "match table \"acl\" (0x00000007)", "match_attributes/stage_tables/0/stage_number" },
        Repeated{ "/tables/1/match_attributes/units", "match table \"wide\" (0x00000008)",
                  "match_attributes/units" },
        Repeated{ "/tables/1/match_attributes/units/0/match_attributes", "match table \"wide\" (0x00000008)",
                  "match_attributes/units/0/match_attributes" },
        Repeated{ "/tables/1/match_attributes/units/0/match_attributes/stage_tables/1/size",
                  "match table \"wide\" (0x00000008)",
                  "match_attributes/units/0/match_attributes/stage_tables/1/size" },
        Repeated{ "/learn_quanta/0/name", "context file \"context.json\"", "learn_quanta/0/name" },
        Repeated{ "/phv_allocation/0/egress", "context file \"context.json\"", "phv_allocation/0/egress" },
        Repeated{ "/phv_allocation/0/ingress/0/records/0/field_width", "context file \"context.json\"",
                  "phv_allocation/0/ingress/0/records/0/field_width" },
        Repeated{ "/flexible_headers/0/fields/0/slice/bit_width", "context file \"context.json\"",
                  "flexible_headers/0/fields/0/slice/bit_width" },
        Repeated{ "/dynamic_hash_calculations/0/field_lists/0/fields/0/name", "context file \"context.json\"",
                  "dynamic_hash_calculations/0/field_lists/0/fields/0/name" } ) );

TEST_F( Finding, OfARepeatedMemberIsNotMadeWhereNoPassReads ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", ContextBuilder()
                                   .table( acl().with( "/p4", R"([{"name":1,"name":2}])" ) )
                                   .with( "/parse_graph", R"({"name":1,"name":2})" )
                                   .text() );
    EXPECT_THAT( messagesOf( "BF411" ), IsEmpty() );
}

TEST_F( Finding, OfRepeatedMembersIsMadeOfTheSwitchConfigurationToo ) {
    writeFile( "context.json", ContextBuilder().table( acl() ).text() );
    writeFile( "switch.conf", R"({"devices":[{"other":1,"other":2,"runtime_config":"r","runtime_config":"r",
        "pipelines":[{"context_file":"context.json","pipes":[0],"pipes":[1]}]}],"devices":[],"devices":1})" );
    String const conf = "switch configuration \"switch.conf\"";
    EXPECT_THAT( messagesOf( "BF411" ),
                 ElementsAre( repeated( conf, "devices/0/runtime_config" ),
                              repeated( conf, "devices/0/pipelines/0/pipes" ),
                              conf + ": has more than one \"devices\" (3 times), of which the first "
                                     "counts" ) );
    for( auto const& finding : Bfri::findingsOf( *loaded() ) )
        EXPECT_EQ( finding.contextFile, "" );
}

// Stage numbers after the first.

struct OddStage {
    char const* number; ///< of the second of three stage tables; null for none
    char const* says;   ///< after its place; null for no finding
};

std::ostream& operator<<( std::ostream& os, OddStage const& row ) {
    return os << ( row.number ? row.number : "none" );
}

class StageNumber : public InFolder, public testing::WithParamInterface<OddStage> {
  protected:
    static StageTable second() {
        if( GetParam().number )
            return StageTable().with( "/stage_number", GetParam().number );
        return StageTable().without( "/stage_number" );
    }
    static void expectOnly( Support::Table const& table, String const& place ) {
        std::vector<String> messages;
        for( auto const& finding : Bfri::findingsOf( *modelOf( ContextBuilder().table( table ) ) ) ) {
            if( finding.kind != codedAs( Bfri::findingKinds(), "far-stage" ) ) // a number, if a large one
                messages.push_back( finding.kind->code + String( " " ) + finding.message() );
        }
        if( GetParam().says )
            EXPECT_THAT( messages, ElementsAre( "BF412 placed table \"acl\" (0x00000007): its \"" + place +
                                                "\" has " + GetParam().says ) );
        else
            EXPECT_THAT( messages, IsEmpty() );
    }
};

TEST_P( StageNumber, BehindTheFirstIsFoundWhereItIsNone ) {
    expectOnly( acl().handle( 7 ).stages( { StageTable(), second(), StageTable() } ),
                "match_attributes/stage_tables/1" );
    expectOnly( acl()
                    .handle( 7 )
                    .matchType( "algorithmic_tcam" )
                    .partitions( 1 )
                    .units( { { StageTable() }, { second() } } ),
                "match_attributes/units/1/match_attributes/stage_tables/0" );
}

INSTANTIATE_TEST_SUITE_P(
    All, StageNumber,
    testing::Values(
        OddStage{ "0", nullptr }, OddStage{ "255", nullptr }, OddStage{ "-0", nullptr },
        OddStage{ "256", R"(a "stage_number" of 256)" }, OddStage{ "-1", R"(a "stage_number" of -1)" },
        OddStage{ "1.5", R"(a "stage_number" of 1.5)" }, OddStage{ "1e0", R"(a "stage_number" of 1.0)" },
        OddStage{ "18446744073709551616", R"(a "stage_number" of 18446744073709553000.0)" },
        OddStage{ "\"3\"", R"(a "stage_number" of "3")" }, OddStage{ "null", R"(a "stage_number" of null)" },
        OddStage{ "[3]", R"(a "stage_number" that is not a number)" },
        OddStage{ nullptr, R"(no "stage_number")" } ) );

TEST_F( Finding, OfOddStagesIsNotMadeOfTablesWithoutResource ) {
    EXPECT_THAT( codesOf( *modelOf( ContextBuilder().table( acl() ).table(
                     conditionTable( "if" ).with( "/stage_tables", R"([{"stage_number":1},{}])" ) ) ) ),
                 IsEmpty() );
}

TEST_F( Finding, OfAnUnknownResourceHasTheTablesHandle ) {
    auto const findings =
        Bfri::findingsOf( *modelOf( ContextBuilder().table( acl().handle( 7 ).action( "a", { "c" } ) ) ) );
    ASSERT_EQ( findings.size(), 1U );
    EXPECT_EQ( findings[ 0 ].handle, 7U );
    EXPECT_THAT( findings[ 0 ].message(), testing::StartsWith( "table \"acl\" (0x00000007): its actions" ) );
    for( auto const& finding :
         Bfri::findingsOf( *modelOf( ContextBuilder()
                                         .table( acl().handle( 7 ).action( "a", { "c" } ) )
                                         .table( acl().handle( 8 ) ) ) ) ) {
        EXPECT_TRUE( finding.kind->code != String( "BF308" ) || !finding.handle ); // of two of that name
    }
}

TEST_F( Finding, OfSomethingUnreferencedNamesTablesWithoutAStageThatListIt ) {
    auto const model = modelOf( ContextBuilder()
                                    .table( acl().statistics( "c" ).stages( {} ) )
                                    .table( lpm().statistics( "c" ).stages( {} ).controllable( false ) )
                                    .table( statisticsTable( "c" ) ) );
    EXPECT_THAT( Bfri::findingsOf( *model ).front().message(),
                 HasSubstr( "; listed by tables without a stage table: \"acl\", \"lpm\"" ) );
}

TEST_F( Finding, OfErrorsComesFirstAndOfNotesLast ) {
    EXPECT_THAT( codesOf( *modelOf( ContextBuilder()
                                        .table( acl().stages( {} ) )
                                        .table( lpm().size( 0 ) )
                                        .flexibleHeader( "h", 65544 ) ) ),
                 ElementsAre( "BF405", "BF402", "BF401" ) );
}

struct Pipes {
    char const* name;
    bool runtimeConfig;
    std::vector<std::vector<std::uint32_t>> pipelines;
    std::vector<String> codes;
};

std::ostream& operator<<( std::ostream& os, Pipes const& row ) { return os << row.name; }

class PipelineFinding : public InFolder, public testing::WithParamInterface<Pipes> {};

/// The pipelines run the same program.
TEST_P( PipelineFinding, AreThese ) {
    String text;
    for( std::size_t i = 0; i < GetParam().pipelines.size(); ++i ) {
        String pipes;
        for( auto const pipe : GetParam().pipelines[ i ] )
            pipes += ( pipes.empty() ? "" : "," ) + std::to_string( pipe );
        String const file = std::to_string( i ) + ".json";
        writeFile( file, ContextBuilder().table( acl().handle( 7 ) ).text() );
        text += ( i == 0 ? "" : "," ) + ( R"({"context_file":")" + file + R"(","pipes":[)" ) + pipes + "]}";
    }
    writeFile( "switch.conf", R"({"devices":[{)" +
                                  String( GetParam().runtimeConfig ? R"("runtime_config":"r",)" : "" ) +
                                  R"("pipelines":[)" + text + "]}]}" );
    EXPECT_EQ( codesOf( *loaded() ), GetParam().codes );
}

INSTANTIATE_TEST_SUITE_P(
    All, PipelineFinding,
    testing::Values(
        Pipes{ "one", true, { { 0, 1 } }, {} }, Pipes{ "hidden", true, { { 0, 1 }, { 1, 0 } }, { "BF101" } },
        Pipes{ "overlap", true, { { 0, 1 }, { 1, 2 } }, { "BF102", "BF206" } },
        Pipes{ "wraps", true, { { 33 } }, { "BF103" } }, Pipes{ "none", true, { {} }, { "BF104" } },
        Pipes{ "bits", true, { { 17 } }, { "BF105" } }, Pipes{ "bits unused", false, { { 17 } }, {} },
        Pipes{ "same program", true, { { 0 }, { 1 } }, { "BF206" } },
        Pipes{ "same handles", false, { { 0 }, { 1 } }, { "BF206" } } ),
    []( auto const& row ) {
        String name = row.param.name;
        std::replace( name.begin(), name.end(), ' ', '_' );
        return name;
    } );

TEST_F( Finding, OfHandlesThatPipelinesShareAsksForARuntimeConfig ) {
    writeFile( "a.json", ContextBuilder().table( acl().handle( 7 ) ).text() );
    writeFile( "b.json", ContextBuilder().table( lpm().handle( 7 ) ).text() );
    writeFile( "switch.conf", R"({"devices":[{"pipelines":[{"context_file":"a.json","pipes":[0]},
                               {"context_file":"b.json","pipes":[1]}]}]})" );
    EXPECT_THAT( codesOf( *loaded() ), ElementsAre( "BF207" ) );
}

class FindingOfTwoFiles : public InFolder {
  protected:
    /// The context files of the findings of a sound one and this, on pipes 0 and 1.
    static std::vector<String> filesOf( ContextBuilder const& context, bool runtimeConfig ) {
        writeFile( "a.json", ContextBuilder().table( lpm() ).text() );
        writeFile( "b.json", context.text() );
        DeviceBuilder device;
        if( runtimeConfig )
            device.runtimeConfig( "r" );
        device.pipeline( "a.json", { 0 } ).pipeline( "b.json", { 1 } );
        writeFile( "switch.conf", SwitchConfBuilder().device( device ).text() );
        std::vector<String> files;
        for( auto const& finding : Bfri::findingsOf( *loaded() ) )
            files.push_back( finding.contextFile );
        return files;
    }
};

TEST_F( FindingOfTwoFiles, KnowsItsFileFromTheHandleWithARuntimeConfig ) {
    EXPECT_THAT( filesOf( ContextBuilder().table( acl().size( 0 ) ), true ), ElementsAre( "b.json" ) );
    EXPECT_THAT( filesOf( ContextBuilder().table( acl().size( 0 ) ), false ), ElementsAre( "" ) );
    EXPECT_THAT( filesOf( twoTables( acl(), acl().handle( 7 ) ), true ), ElementsAre( "b.json" ) );
}

TEST_F( FindingOfTwoFiles, KnowsItsFileWhereItReadIt ) {
    for( bool const runtimeConfig : { true, false } ) {
        EXPECT_THAT( filesOf( ContextBuilder().flexibleHeader( "h", 65544 ), runtimeConfig ),
                     ElementsAre( "b.json" ) );
        EXPECT_THAT( filesOf( ContextBuilder().table( acl().with( "/direction", "\"up\"" ) ), runtimeConfig ),
                     ElementsAre( "b.json" ) );
    }
}

TEST_F( Finding, OfUpperBitsNeedsARuntimeConfig ) {
    writeFile( "a.json", ContextBuilder().table( acl().handle( 0x30000007 ) ).text() );
    writeFile(
        "switch.conf",
        R"({"devices":[{"runtime_config":"r","pipelines":[{"context_file":"a.json","pipes":[0]}]}]})" );
    EXPECT_THAT( codesOf( *loaded() ), ElementsAre( "BF106" ) );
}

TEST( FindingKinds, HaveAscendingCodesAndWords ) {
    String before;
    for( Bfri::FindingKind const& kind : Bfri::findingKinds() ) {
        EXPECT_LT( before, kind.code );
        before = kind.code;
        for( char const* const text : { kind.title, kind.meaning, kind.matters, kind.advice } )
            EXPECT_STRNE( text, "" ) << kind.code;
    }
}

} // namespace
