#include "resourceinfo/parser/context/Phv.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::JsonTree;
using testing::ElementsAre;

char const* const differentWidth = "perStagePhvSize[ record_field_name ] == width";

/// An element of "records".
JsonTree field( std::string_view name, U32 width, bool pov = false ) {
    return JsonTree::object()
        .with( "/is_pov", JsonTree::boolean( pov ) )
        .with( "/field_name", JsonTree::string( name ) )
        .with( "/field_width", JsonTree::number( width ) );
}

/// The containers of one direction, one for each list of records.
JsonTree containers( std::initializer_list<std::vector<JsonTree>> lists ) {
    JsonTree result = JsonTree::array();
    for( auto const& records : lists ) {
        JsonTree list = JsonTree::array();
        for( JsonTree const& record : records )
            list.with( "/-", record );
        result.with( "/-", JsonTree::object().with( "/records", list ) );
    }
    return result;
}

JsonTree stage( JsonTree const& ingress, JsonTree const& egress = JsonTree::array() ) {
    return JsonTree::object().with( "/ingress", ingress ).with( "/egress", egress );
}

/// A stage with one ingress field.
JsonTree ingressStage( std::string_view name, U32 width ) {
    return stage( containers( { { field( name, width ) } } ) );
}

using Bytes = std::pair<String, int>;

template<class Map>
std::vector<Bytes> bytesOf( Map const& map ) {
    std::vector<Bytes> result;
    for( auto const& entry : map )
        result.emplace_back( entry.key(), entry.value() );
    return result;
}

class Phv : public testing::Test {
  protected:
    void run( std::initializer_list<JsonTree> stages ) {
        ContextBuilder context;
        for( JsonTree const& each : stages )
            context.with( "/phv_allocation/-", each );
        ParsedJson const d( context.text() );
        parsePhv( parser_.get(), d.json() );
    }
    void runStage( JsonTree const& phvStage, String const& direction ) {
        ParsedJson const json( phvStage.text() );
        EXPECT_EQ( parsePhvStage( parser_.get(), json.json(), direction ), 0 );
    }
    std::vector<Bytes> ingress() const { return bytesOf( parser_->ingressPhvContainers() ); }
    std::vector<Bytes> egress() const { return bytesOf( parser_->egressPhvContainers() ); }

    Zel::Ptr<BfResourceParser> parser_ = emptyParser();
};

TEST_F( Phv, FieldsOfAStageAreKeptForEachDirection ) {
    run( { stage( containers( { { field( "b", 2 ), field( "a", 6 ) }, { field( "c", 1 ) } } ),
                  containers( { { field( "a", 4 ) } } ) ) } );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "a", 6 ), Bytes( "b", 2 ), Bytes( "c", 1 ) ) );
    EXPECT_THAT( egress(), ElementsAre( Bytes( "a", 4 ) ) );
}

TEST_F( Phv, FieldMayStandInSeveralContainersWithOneWidth ) {
    run( { stage( containers( { { field( "f", 2 ) }, { field( "f", 2 ), field( "f", 2 ) } } ) ) } );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "f", 2 ) ) );
}

TEST_F( Phv, FieldWithTwoWidthsInAStageAndDirectionIsFatalAndNothingOfThemIsStored ) {
    auto const two = containers( { { field( "e", 1 ), field( "f", 2 ) }, { field( "f", 4 ) } } );
    EXPECT_EQ( Support::conditionOf( [ & ] { run( { stage( two ) } ); } ), differentWidth );
    EXPECT_EQ( Support::conditionOf( [ & ] { run( { stage( "[]", two ) } ); } ), differentWidth );
    EXPECT_THAT( ingress(), ElementsAre() );
    EXPECT_THAT( egress(), ElementsAre() );
}

TEST_F( Phv, WidthsAreComparedAsEightBitNumbers ) {
    run( { stage( containers( { { field( "f", 2 ), field( "f", 34 ), field( "f", 0x20000002 ) } } ) ) } );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "f", 2 ) ) );
    auto const none = containers( { { field( "g", 32 ), field( "g", 2 ) } } );
    EXPECT_EQ( Support::conditionOf( [ & ] { run( { stage( none ) } ); } ), differentWidth );
}

TEST_F( Phv, DirectionsAndStagesMayDisagree ) {
    run( { stage( containers( { { field( "f", 2 ) } } ), containers( { { field( "f", 4 ) } } ) ),
           stage( containers( { { field( "f", 3 ) } } ), containers( { { field( "f", 1 ) } } ) ) } );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "f", 3 ) ) );
    EXPECT_THAT( egress(), ElementsAre( Bytes( "f", 4 ) ) );
}

TEST_F( Phv, LargestNumberOfBytesWinsInWhateverStage ) {
    run( { ingressStage( "up", 2 ), ingressStage( "up", 4 ) } );
    run( { ingressStage( "down", 4 ), ingressStage( "down", 2 ) } );
    run( { ingressStage( "between", 1 ), ingressStage( "between", 31 ), ingressStage( "between", 5 ) } );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "between", 31 ), Bytes( "down", 4 ), Bytes( "up", 4 ) ) );
}

TEST_F( Phv, BytesAreTheWidthModulo32 ) {
    for( auto const& [ width, bytes ] :
         { std::pair( 0U, 0 ), std::pair( 1U, 1 ), std::pair( 31U, 31 ), std::pair( 32U, 0 ),
           std::pair( 33U, 1 ), std::pair( 63U, 31 ), std::pair( 64U, 0 ), std::pair( 256U, 0 ),
           std::pair( 0xFFFFFFFFU, 31 ) } ) {
        parser_->ingressPhvContainersDelAll();
        parser_->egressPhvContainersDelAll();
        auto const one = containers( { { field( "f", width ) } } );
        run( { stage( one, one ) } );
        EXPECT_THAT( ingress(), ElementsAre( Bytes( "f", bytes ) ) ) << width;
        EXPECT_THAT( egress(), ElementsAre( Bytes( "f", bytes ) ) ) << width;
    }
}

TEST_F( Phv, NoBytesAreStoredForANewFieldAndReplaceNone ) {
    auto const none = containers( { { field( "f", 32 ) } } );
    run( { stage( none, none ) } );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "f", 0 ) ) );
    EXPECT_THAT( egress(), ElementsAre( Bytes( "f", 0 ) ) );
    auto const some = containers( { { field( "f", 5 ) } } );
    run( { stage( some, some ), stage( none, none ) } );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "f", 5 ) ) );
    EXPECT_THAT( egress(), ElementsAre( Bytes( "f", 5 ) ) );
}

TEST_F( Phv, PovRecordsAreSkippedUnread ) {
    run( { stage( containers( { { field( "f", 2 ), field( "f", 4, true ) },
                                { field( "pov", 1, true ), JsonTree( R"({ "is_pov": true })" ) } } ) ) } );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "f", 2 ) ) );
}

TEST_F( Phv, EmptyListsChangeNothing ) {
    run( { ingressStage( "f", 2 ) } );
    run( {} );
    run( { stage( "[]" ), stage( containers( { {} } ), containers( { {} } ) ) } );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "f", 2 ) ) );
    EXPECT_THAT( egress(), ElementsAre() );
}

TEST_F( Phv, StageWithoutEgressIsFatalWhenItsIngressIsStored ) {
    auto const failure =
        Support::failureOf( [ & ] { run( { ingressStage( "f", 2 ).without( "/egress" ) } ); } );
    EXPECT_EQ( failure.condition, noMember );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "f", 2 ) ) );
}

TEST_F( Phv, OtherDirectionIsFatalOnceItsRecordsAreRead ) {
    char const* const invalid = "false && \"Invalid Direction\"";
    auto const one = containers( { { field( "f", 2 ) } } );
    auto const two = containers( { { field( "f", 2 ), field( "f", 3 ) } } );
    auto const sideways = []( JsonTree const& list ) { return JsonTree::object().with( "/records", list ); };
    EXPECT_EQ( Support::conditionOf( [ & ] { runStage( sideways( one ), "records" ); } ), invalid );
    EXPECT_EQ( Support::conditionOf( [ & ] { runStage( sideways( two ), "records" ); } ), differentWidth );
    EXPECT_EQ( Support::conditionOf( [ & ] { runStage( stage( one ), "records" ); } ), noMember );
    runStage( sideways( "[]" ), "records" );
    EXPECT_THAT( ingress(), ElementsAre() );
    EXPECT_THAT( egress(), ElementsAre() );
}

TEST_F( Phv, OneDirectionOfAStageIsTakenAlone ) {
    auto const both = stage( containers( { { field( "i", 2 ) } } ), containers( { { field( "e", 3 ) } } ) );
    runStage( both, "egress" );
    EXPECT_THAT( ingress(), ElementsAre() );
    EXPECT_THAT( egress(), ElementsAre( Bytes( "e", 3 ) ) );
    runStage( both, "ingress" );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "i", 2 ) ) );
}

TEST_F( Phv, FieldNameEndsAtItsFirstNul ) {
    run( { ingressStage( "x", 2 ).with( "/ingress/0/records/0/field_name", R"("f\u0000x")" ) } );
    EXPECT_THAT( ingress(), ElementsAre( Bytes( "f", 2 ) ) );
}

TEST_F( Phv, OnlyThePassIsTraced ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    run( { ingressStage( "f", 2 ) } );
    ASSERT_THAT( trace.texts(), ElementsAre( "Parsing PHV" ) );
    EXPECT_EQ( trace.lines()[ 0 ].level, 6 );
}

TEST( PhvFaults, InTheirOrder ) {
    auto const one = containers( { { field( "f", 2 ), field( "f", 2 ) }, { field( "f", 2 ) } } );
    auto const context = ContextBuilder()
                             .with( "/phv_allocation/-", stage( one, one ) )
                             .with( "/phv_allocation/-", stage( one ) );
    expectFaults( context.tree(),
                  {
                      { "", "null", noObject },
                      { "/phv_allocation", removed, noMember },
                      { "/phv_allocation", "null", "phvs.IsArray()" },
                      { "/phv_allocation", "{}", "phvs.IsArray()" },
                      { "/phv_allocation/0", "null", "phvStage.IsObject()" },
                      { "/phv_allocation/0", "[]", "phvStage.IsObject()" },
                      { "/phv_allocation/0/ingress", removed, noMember },
                      { "/phv_allocation/0/ingress", "null", "gress_info.IsArray()" },
                      { "/phv_allocation/0/ingress", "{}", "gress_info.IsArray()" },
                      { "/phv_allocation/0/ingress/0", "null", noObject },
                      { "/phv_allocation/0/ingress/0", "[]", noObject },
                      { "/phv_allocation/0/ingress/0/records", removed, noMember },
                      { "/phv_allocation/0/ingress/0/records", "null", "records.IsArray()" },
                      { "/phv_allocation/0/ingress/0/records", "{}", "records.IsArray()" },
                      { "/phv_allocation/0/ingress/0/records/0", "null", "record.IsObject()" },
                      { "/phv_allocation/0/ingress/0/records/0", "[]", "record.IsObject()" },
                      { "/phv_allocation/0/ingress/0/records/0/is_pov", removed, noMember },
                      { "/phv_allocation/0/ingress/0/records/0/is_pov", "null", noBool },
                      { "/phv_allocation/0/ingress/0/records/0/is_pov", "1", noBool },
                      { "/phv_allocation/0/ingress/0/records/0/is_pov", "\"true\"", noBool },
                      { "/phv_allocation/0/ingress/0/records/0/field_name", removed, noMember },
                      { "/phv_allocation/0/ingress/0/records/0/field_name", "null", noString },
                      { "/phv_allocation/0/ingress/0/records/0/field_name", "7", noString },
                      { "/phv_allocation/0/ingress/0/records/0/field_width", removed, noMember },
                      { "/phv_allocation/0/ingress/0/records/0/field_width", "null", noUnsigned },
                      { "/phv_allocation/0/ingress/0/records/0/field_width", "-1", noUnsigned },
                      { "/phv_allocation/0/ingress/0/records/0/field_width", "2.0", noUnsigned },
                      { "/phv_allocation/0/ingress/0/records/0/field_width", "4294967296", noUnsigned },
                      { "/phv_allocation/0/ingress/0/records/1/is_pov", "[]", noBool },
                      { "/phv_allocation/0/ingress/0/records/1/field_width", "4", differentWidth },
                      { "/phv_allocation/0/ingress/1/records/0/field_width", "3", differentWidth },
                      { "/phv_allocation/0/egress", removed, noMember },
                      { "/phv_allocation/0/egress", "\"\"", "gress_info.IsArray()" },
                      { "/phv_allocation/0/egress/0/records", "1", "records.IsArray()" },
                      { "/phv_allocation/0/egress/0/records/1/field_width", "0", differentWidth },
                      { "/phv_allocation/1", "1", "phvStage.IsObject()" },
                      { "/phv_allocation/1/ingress/0/records/0", "true", "record.IsObject()" },
                      { "/phv_allocation/1/egress", removed, noMember },
                  },
                  []( Json d ) {
                      auto const parser = emptyParser();
                      parsePhv( parser.get(), d );
                  } );
}

} // namespace
} // namespace BfResourceInfo
