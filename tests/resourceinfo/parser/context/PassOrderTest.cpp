#include "resourceinfo/parser/context/ContextFile.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::matchTable;
using testing::ElementsAre;
using testing::ElementsAreArray;

std::vector<String> const allPasses{ "Preprocessing tables",
                                     "Preprocessing done",
                                     "Parsing resources, tables and actions",
                                     "Parsing counters, meters, and registers",
                                     "Parsing learn quantas",
                                     "Parsing PHV",
                                     "Parsing flexible headers",
                                     "Parsing dynamic_hash_calculations" };

std::vector<String> passesTo( char const* last ) {
    auto const end = std::find( allPasses.begin(), allPasses.end(), last );
    return { allPasses.begin(), end == allPasses.end() ? end : end + 1 };
}

class PassOrder : public testing::Test {
  protected:
    void load( ContextBuilder const& context ) {
        auto const parser = emptyParser();
        parseContextJson( parser.get(), folder_.write( "context.json", context.text() ), {} );
    }

    Support::TemporaryFolder folder_;
};

TEST_F( PassOrder, EveryPassIsTracedInItsOrder ) {
    auto const context = ContextBuilder().flexibleHeader( "eth", 112 );
    Support::TraceCollector const trace( "BfResourceParser", { 6 } );
    load( context );
    EXPECT_THAT( trace.texts(), ElementsAreArray( allPasses ) );
    for( Zel::TraceLine const& line : trace.lines() ) {
        EXPECT_EQ( line.source, "BfResourceParser" );
        EXPECT_NE( line.line, 0 );
        EXPECT_NE( line.function, "" );
    }
}

TEST_F( PassOrder, FlexibleHeadersAreNoPassWithoutTheMember ) {
    Support::TraceCollector const trace( "BfResourceParser", { 6 } );
    load( ContextBuilder() );
    auto expected = allPasses;
    expected.erase( expected.end() - 2 );
    EXPECT_THAT( trace.texts(), ElementsAreArray( expected ) );
}

TEST_F( PassOrder, EmptyFlexibleHeadersAreAPass ) {
    Support::TraceCollector const trace( "BfResourceParser", { 6 } );
    load( ContextBuilder().with( "/flexible_headers", "[]" ) );
    EXPECT_THAT( trace.texts(), ElementsAreArray( allPasses ) );
}

TEST_F( PassOrder, DocumentWithoutFlexibleHeadersHasNoHeaders ) {
    auto const parser = emptyParser();
    parseContextJson( parser.get(), folder_.write( "context.json", ContextBuilder().text() ), {} );
    EXPECT_TRUE( parser->bfHeaders().empty() );
}

TEST_F( PassOrder, StartIsTracedAtLevelFiveWithThePathRightBehindTheSignature ) {
    String const path = folder_.write( "context.json", ContextBuilder().text() );
    Support::TraceCollector const trace( "BfResourceParser", { 5 } );
    auto const parser = emptyParser();
    parseContextJson( parser.get(), path, {} );
    ASSERT_EQ( trace.lines().size(), 3 ) << "the parser's own, the file's, the preprocessing's";
    EXPECT_EQ( trace.lines()[ 1 ].text,
               "void parseContextJson(BfResourceInfo::BfResourceParser*, const String&, "
               "const BfResourceParserContext&)" +
                   path );
    EXPECT_EQ( trace.lines()[ 1 ].function, "parseContextJson" );
    EXPECT_EQ( trace.lines()[ 2 ].function, "preprocessContext" );
}

TEST_F( PassOrder, SectionsThatAreWrongAreFatalInTheirPass ) {
    struct Row {
        char const* section;
        std::optional<char const*> json;
        char const* condition;
        char const* lastPass;
    };
    char const* const tables = "Parsing counters, meters, and registers";
    char const* const learnQuanta = "Parsing learn quantas";
    char const* const headers = "Parsing flexible headers";
    char const* const hashes = "Parsing dynamic_hash_calculations";
    for( auto const& [ section, json, condition, lastPass ] :
         { Row{ "/tables", {}, "false", "" }, Row{ "/tables", "null", "d[ \"tables\" ].IsArray()", "" },
           Row{ "/learn_quanta", {}, "false", tables },
           Row{ "/learn_quanta", "null", "lqs.IsArray()", tables },
           Row{ "/learn_quanta", "{}", "lqs.IsArray()", tables },
           Row{ "/phv_allocation", {}, "false", learnQuanta },
           Row{ "/phv_allocation", "null", "phvs.IsArray()", learnQuanta },
           Row{ "/phv_allocation", "\"\"", "phvs.IsArray()", learnQuanta },
           Row{ "/flexible_headers", "null", "IsArray()", headers },
           Row{ "/flexible_headers", "{}", "IsArray()", headers },
           Row{ "/dynamic_hash_calculations", {}, "false", hashes },
           Row{ "/dynamic_hash_calculations", "null", "IsArray()", hashes },
           Row{ "/dynamic_hash_calculations", "1", "IsArray()", hashes } } ) {
        auto context = ContextBuilder().with( "/flexible_headers", "[]" );
        if( json )
            context.with( section, *json );
        else
            context.without( section );
        Support::TraceCollector const trace( "BfResourceParser", { 6 } );
        EXPECT_EQ( Support::conditionOf( [ & ] { load( context ); } ), condition ) << context.text();
        auto const expected = *lastPass ? passesTo( lastPass ) : std::vector<String>();
        EXPECT_THAT( trace.texts(), ElementsAreArray( expected ) ) << context.text();
    }
}

TEST_F( PassOrder, EarlierPassFailsFirst ) {
    std::vector<std::pair<char const*, char const*>> const faults{
        { "/tables/0/direction", "IsString()" },
        { "/tables/0/match_attributes/number_partitions", "data_.f.flags & kUintFlag" },
        { "/learn_quanta", "lqs.IsArray()" },
        { "/phv_allocation", "phvs.IsArray()" },
        { "/flexible_headers", "IsArray()" },
        { "/dynamic_hash_calculations", "IsArray()" } };
    for( std::size_t first = 0; first < faults.size(); ++first ) {
        auto context = ContextBuilder().table( matchTable( "acl" ) );
        for( std::size_t i = first; i < faults.size(); ++i )
            context.with( faults[ i ].first, "null" );
        auto const failure = Support::failureOf( [ & ] { load( context ); } );
        EXPECT_EQ( failure.condition, faults[ first ].second ) << faults[ first ].first;
        EXPECT_THAT( failure.position, testing::HasSubstr( faults[ first ].first ) );
    }
}

/// Faults of every step of every pass, in the order in which they are met.
std::vector<Fault> const faultsInOrder{
    { "/tables/0/direction", "null", noString },
    { "/tables/3/direction", "null", noString },
    { "/tables/0/stage_tables/0/stage_table_type", "\"x\"", "false && \"Unexpected BfResourceType\"" },
    { "/tables/1/match_attributes/stage_tables/0/stage_table_type", "\"x\"",
      "false && \"Unexpected BfResourceType\"" },
    { "/tables/1/match_attributes/number_partitions", "null", noUnsigned },
    { "/tables/1/actions/0/handle", "null", noUnsigned },
    { "/tables/1/actions/1/name", "null", noString },
    { "/tables/3/stage_tables/0/stage_table_type", "\"y\"", "false && \"Unexpected BfResourceType\"" },
    { "/tables/10/match_attributes/number_partitions", "null", noUnsigned },
    { "/tables/0/statistics_type", "null", noString },
    { "/tables/2/meter_granularity", "null", noString },
    { "/tables/3/alu_width", "null", noUnsigned },
    { "/tables/6/how_referenced", "null", noString },
    { "/tables/7/alu_width", "16", "width == 32" },
    { "/tables/8/statistics_type", "null", noString },
    { "/learn_quanta/0/name", "null", noString },
    { "/phv_allocation/0/ingress", "null", "gress_info.IsArray()" },
    { "/phv_allocation/0/egress", "null", "gress_info.IsArray()" },
    { "/phv_allocation/1/ingress", "null", "gress_info.IsArray()" },
    { "/flexible_headers/0/fields/0/slice/bit_width", "7", "header.size() % 8 == 0" },
    { "/dynamic_hash_calculations/0/field_lists/0/fields", "[]", "fieldCount > 0" },
};

TEST_F( PassOrder, OfTwoFaultsTheOneThatIsReadFirstIsMet ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    ASSERT_NO_THROW( load( contextOfEveryPass() ) );
    for( std::size_t first = 0; first < faultsInOrder.size(); ++first ) {
        auto const& [ pointer, json, condition ] = faultsInOrder[ first ];
        auto const alone = contextOfEveryPass().with( pointer, *json );
        auto const expected = Support::failureOf( [ & ] { load( alone ); } );
        EXPECT_EQ( expected.condition, condition ) << pointer;
        for( std::size_t second = first + 1; second < faultsInOrder.size(); ++second ) {
            auto const both = ContextBuilder( alone ).with( faultsInOrder[ second ].pointer,
                                                            *faultsInOrder[ second ].json );
            auto const failure = Support::failureOf( [ & ] { load( both ); } );
            EXPECT_EQ( failure.position, expected.position ) << faultsInOrder[ second ].pointer;
            EXPECT_EQ( failure.line, expected.line ) << faultsInOrder[ second ].pointer;
        }
    }
}

TEST_F( PassOrder, StepsOfATableFollowOneAnotherBeforeThoseOfTheNext ) {
    Support::TraceCollector const trace( "BfResourceParser", { 6, 7 } );
    load( ContextBuilder()
              .table( Support::statisticsTable( "c" ) )
              .table( matchTable( "acl" ).action( "permit" ) )
              .table( Support::meterTable( "m" ) )
              .table( matchTable( "nat" ) )
              .learnQuanta( "digest" ) );
    EXPECT_THAT( trace.texts(),
                 ElementsAre( "Preprocessing tables", "Preprocessing table c", "Preprocessing table acl",
                              "Preprocessing table m", "Preprocessing table nat", "Preprocessing done",
                              "Parsing resources, tables and actions", "Parsed resource c",
                              "Parsed resource acl", "Parsed table acl", "Parsed action NoAction",
                              "Parsed action permit", "Parsed resource m", "Parsed resource nat",
                              "Parsed table nat", "Parsed action NoAction",
                              "Parsing counters, meters, and registers", "Parsed counterc", "Parsed meter m",
                              "Parsing learn quantas", "Parsed lq digest", "Parsing PHV",
                              "Parsing dynamic_hash_calculations" ) );
}

TEST_F( PassOrder, EveryTableIsPreprocessedBeforeTheFirstIsParsed ) {
    Support::TraceCollector const trace( "BfResourceParser", { 6, 7 } );
    load( ContextBuilder().table( matchTable( "a" ) ).table( matchTable( "b" ) ) );
    auto const texts = trace.texts();
    auto const position = [ & ]( char const* text ) {
        return std::find( texts.begin(), texts.end(), text ) - texts.begin();
    };
    std::vector<std::ptrdiff_t> const order{ position( "Preprocessing tables" ),
                                             position( "Preprocessing table a" ),
                                             position( "Preprocessing table b" ),
                                             position( "Preprocessing done" ),
                                             position( "Parsing resources, tables and actions" ),
                                             position( "Parsed table a" ),
                                             position( "Parsed table b" ),
                                             position( "Parsing counters, meters, and registers" ) };
    EXPECT_TRUE( std::is_sorted( order.begin(), order.end() ) );
    EXPECT_LT( order.back(), static_cast<std::ptrdiff_t>( texts.size() ) );
}

TEST_F( PassOrder, ConditionsAndSkippedTablesLeaveNoTableAndNoActions ) {
    auto const parser = emptyParser();
    auto const context =
        ContextBuilder()
            .table( Support::conditionTable( "if" ).stages( { Support::StageTable() } ).action( "a" ) )
            .table( matchTable( "fixed" ).controllable( false ).with( "/actions", "[]" ).action( "b" ) )
            .table( matchTable( "static" ).with( "/static_entries", "[ {} ]" ).action( "c" ) )
            .table( matchTable( "acl" ) );
    parseContextJson( parser.get(), folder_.write( "context.json", context.text() ), {} );
    ASSERT_EQ( parser->bfTables().size(), 1 );
    EXPECT_EQ( parser->bfTables().at( 0 ).name, "acl" );
    for( BfActionInfo const& action : parser->bfActions() )
        EXPECT_EQ( action.tableName, "acl" ) << action.name;
    for( BfResource const& resource : parser->bfResources() )
        EXPECT_NE( resource.name, "if" );
}

} // namespace
} // namespace BfResourceInfo
