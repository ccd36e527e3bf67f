#include "tests/inspect/diff/Compared.h"

#include <functional>
#include <gmock/gmock.h>

namespace {

using Support::ContextBuilder;
using Support::JsonTree;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

/// An edit of a program, and everything that is noticed.
struct Edit {
    char const* name;
    std::function<void( ContextBuilder& )> edit;
    std::vector<String> notices;
    bool byName;
    bool byHandle;
    bool modelDiffers = true;
};

std::ostream& operator<<( std::ostream& os, Edit const& edit ) { return os << edit.name; }

class Edited : public InFolder, public testing::WithParamInterface<Edit> {
  protected:
    Edited() { GetParam().edit( program_ ); }

    Bfri::Comparison forth( Bfri::ComparisonScope const& scope = {} ) const {
        return compared( editedProgram().text(), program_.text(), scope );
    }
    Bfri::Comparison back() const { return compared( program_.text(), editedProgram().text() ); }

  private:
    ContextBuilder program_ = editedProgram();
};

TEST_P( Edited, IsToldOnItsRecordAndNothingElse ) {
    auto const verdict = verdictOf( forth() );
    EXPECT_THAT( noticesIn( verdict ), UnorderedElementsAreArray( GetParam().notices ) );
    EXPECT_TRUE( verdict.differs );
    EXPECT_EQ( verdict.modelDiffers, GetParam().modelDiffers );
    EXPECT_EQ( verdict.byName, GetParam().byName );
    EXPECT_EQ( verdict.byHandle, GetParam().byHandle );
}

TEST_P( Edited, IsMirroredTheOtherWayRound ) { expectMirrored( forth(), back() ); }

TEST_P( Edited, WithoutRenamesHasNone ) {
    for( auto const& kind : forth( { .renames = false } ).kinds ) {
        for( auto const& record : kind.changed )
            EXPECT_FALSE( record.renamed );
    }
}

/// Sets a value; JSON pointers begin at the context file.
auto set( char const* pointer, char const* json ) {
    return [ = ]( ContextBuilder& context ) { context.with( pointer, json ); };
}

auto drop( char const* pointer ) {
    return [ = ]( ContextBuilder& context ) { context.without( pointer ); };
}

/// Several at once.
auto all( std::vector<std::function<void( ContextBuilder& )>> edits ) {
    return [ = ]( ContextBuilder& context ) {
        for( auto const& edit : edits )
            edit( context );
    };
}

std::function<void( ContextBuilder& )> copyOf( char const* table, char const* name, U32 handle ) {
    return [ = ]( ContextBuilder& context ) {
        JsonTree copy = context.tree().at( table );
        copy.with( "/name", JsonTree::string( name ) ).with( "/handle", JsonTree::number( handle ) );
        context.with( "/tables/-", copy );
    };
}

/// Exchanges two values.
auto swap( char const* one, char const* other ) {
    return [ = ]( ContextBuilder& context ) {
        JsonTree const first = context.tree().at( one );
        context.with( one, context.tree().at( other ) ).with( other, first );
    };
}

INSTANTIATE_TEST_SUITE_P(
    Tables, Edited,
    testing::Values(
        Edit{ "Removed",
              drop( "/tables/1" ),
              { "BD101 table b", "BD101 resource b", "BD101 action NoAction of b", "BD101 action set of b" },
              false,
              false },
        Edit{ "Added",
              copyOf( "/tables/1", "new", 77 ),
              { "BD301 table new", "BD301 resource new", "BD301 action NoAction of new",
                "BD301 action set of new" },
              true,
              true },
        Edit{ "Copied",
              []( ContextBuilder& context ) {
                  context.with( "/tables/-", context.tree().at( "/tables/2" ) )
                      .without( "/tables/2/static_entries" )
                      .without( "/tables/11/static_entries" );
              },
              { "BD107 table fixed", "BD302 table fixed", "BD302 table fixed",
                "BD302 action NoAction of fixed", "BD302 action NoAction of fixed", "BD301 resource fixed" },
              false,
              true },
        Edit{ "Renamed", set( "/tables/1/name", "\"bb\"" ), { "BD102 table b" }, false, true },
        Edit{ "RenamedAndResized",
              all( { set( "/tables/1/name", "\"bb\"" ), set( "/tables/1/size", "9" ) } ),
              { "BD102 table b", "BD104 table b", "BD104 resource b" },
              false,
              true },
        Edit{ "RenamedAndRenumbered",
              all( { set( "/tables/1/name", "\"bb\"" ), set( "/tables/1/handle", "9" ) } ),
              { "BD102 table b", "BD201 table b" },
              false,
              false },
        Edit{
            "Shrunk", set( "/tables/1/size", "1999" ), { "BD104 table b", "BD104 resource b" }, false, true },
        Edit{ "Grown", set( "/tables/1/size", "2001" ), { "BD303 table b", "BD303 resource b" }, true, true },
        Edit{ "Renumbered", set( "/tables/1/handle", "9" ), { "BD201 table b" }, true, false },
        Edit{ "OfExchangedHandles",
              swap( "/tables/0/handle", "/tables/1/handle" ),
              { "BD201 table a", "BD201 table b", "BD202 table a", "BD202 table b" },
              true,
              false },
        Edit{ "LeftOutForItsEntries",
              set( "/tables/1/static_entries", "[1]" ),
              { "BD103 table b", "BD103 action NoAction of b", "BD103 action set of b" },
              false,
              false },
        Edit{ "LeftOutAsNotControllable",
              set( "/tables/1/is_resource_controllable", "false" ),
              { "BD103 table b", "BD103 action NoAction of b", "BD103 action set of b" },
              false,
              false },
        Edit{ "Back",
              drop( "/tables/2/static_entries" ),
              { "BD302 table fixed", "BD302 action NoAction of fixed" },
              true,
              true },
        Edit{ "OfAnotherDirection",
              set( "/tables/1/direction", "\"egress\"" ),
              { "BD105 resource b" },
              false,
              true },
        Edit{ "OfAnotherPipe", set( "/tables/1/logical_pipe", "\"x\"" ), { "BD105 table b" }, false, true },
        Edit{ "WithAProfile", set( "/tables/1/action_profile", "\"p\"" ), { "BD105 table b" }, false, true },
        Edit{ "Moved",
              all( { set( "/tables/0/match_attributes/stage_tables/0/stage_number", "4" ),
                     set( "/tables/0/match_attributes/stage_tables/1/stage_number", "5" ) } ),
              { "BD304 resource a" },
              true,
              true },
        Edit{ "OfAnotherSecondStage",
              set( "/tables/0/match_attributes/stage_tables/1/stage_number", "5" ),
              { "BD304 resource a" },
              true,
              true,
              false },
        Edit{ "OfOtherSizesByStage",
              all( { set( "/tables/0/match_attributes/stage_tables/0/size", "500" ),
                     set( "/tables/0/match_attributes/stage_tables/1/size", "500" ) } ),
              { "BD304 resource a" },
              true,
              true,
              false },
        Edit{ "OfFewerStages",
              drop( "/tables/0/match_attributes/stage_tables/1" ),
              { "BD304 resource a", "BD304 resource a", "BD304 resource a" },
              true,
              true },
        Edit{ "Exchanged",
              swap( "/tables/0", "/tables/1" ),
              { "BD312 tables ", "BD312 resources ", "BD312 actions " },
              true,
              true } ),
    []( auto const& row ) { return row.param.name; } );

INSTANTIATE_TEST_SUITE_P(
    Actions, Edited,
    testing::Values(
        Edit{ "ActionRemoved", drop( "/tables/1/actions/1" ), { "BD101 action set of b" }, false, false },
        Edit{ "ActionAddedInFront",
              []( ContextBuilder& context ) {
                  JsonTree actions = JsonTree::array();
                  actions.with( "/-", JsonTree( R"({"name":"first","handle":5})" ) );
                  for( char const* const i : { "0", "1" } )
                      actions.with( "/-", context.tree().at( String( "/tables/1/actions/" ) + i ) );
                  context.with( "/tables/1/actions", actions );
              },
              { "BD301 action first of b" },
              true,
              true },
        Edit{ "ActionRenamed",
              set( "/tables/1/actions/1/name", "\"put\"" ),
              { "BD102 action set of b" },
              false,
              true },
        Edit{ "ActionRenumbered",
              set( "/tables/1/actions/1/handle", "3" ),
              { "BD201 action set of b" },
              true,
              false },
        Edit{ "ActionsOfExchangedHandles",
              swap( "/tables/0/actions/1/handle", "/tables/0/actions/2/handle" ),
              { "BD201 action hit of a", "BD201 action miss of a", "BD202 action hit of a",
                "BD202 action miss of a" },
              true,
              false } ),
    []( auto const& row ) { return row.param.name; } );

INSTANTIATE_TEST_SUITE_P(
    OtherRecords, Edited,
    testing::Values(
        Edit{ "CounterOfOtherUnits",
              set( "/tables/6/statistics_type", "\"bytes\"" ),
              { "BD105 counter indirect" },
              false,
              true },
        Edit{ "CounterShrunk",
              set( "/tables/6/size", "63" ),
              { "BD104 counter indirect", "BD104 resource indirect" },
              false,
              true },
        Edit{ "CounterRenamed",
              all( { set( "/tables/6/name", "\"in\"" ),
                     set( "/tables/0/actions/1/indirect_resources/0/resource_name", "\"in\"" ) } ),
              { "BD102 counter indirect" },
              false,
              true },
        Edit{ "MeterOfPackets",
              set( "/tables/7/meter_granularity", "\"packets\"" ),
              { "BD105 meter police" },
              false,
              true },
        Edit{ "RegisterOfAnotherWidth",
              set( "/tables/9/alu_width", "64" ),
              { "BD105 register cells", "BD105 register cells" },
              false,
              true },
        Edit{ "LearnQuantaRenamed",
              set( "/learn_quanta/0/name", "\"l\"" ),
              { "BD102 learn-quanta learn" },
              false,
              true },
        Edit{ "LearnQuantaGone", drop( "/learn_quanta/0" ), { "BD101 learn-quanta learn" }, false, false },
        Edit{ "LearnQuantaLeftOut",
              drop( "/learn_quanta/0/lq_cfg_type" ),
              { "BD103 learn-quanta learn" },
              false,
              false },
        Edit{ "HeaderGrown",
              set( "/flexible_headers/0/fields/0/slice/bit_width", "24" ),
              { "BD105 header header" },
              false,
              true },
        Edit{ "HeaderRenamed",
              set( "/flexible_headers/0/name", "\"h\"" ),
              { "BD102 header header" },
              false,
              true },
        Edit{ "HashOfExchangedFields",
              swap( "/dynamic_hash_calculations/0/field_lists/0/fields/0",
                    "/dynamic_hash_calculations/0/field_lists/0/fields/1" ),
              { "BD105 hash hash" },
              false,
              true },
        Edit{ "HashOfOneMore",
              set( "/dynamic_hash_calculations/0/field_lists/0/fields/-", R"({"name":"more"})" ),
              { "BD303 hash hash", "BD303 hash hash" },
              true,
              true },
        Edit{ "HashOfOneLess",
              drop( "/dynamic_hash_calculations/0/field_lists/0/fields/2" ),
              { "BD104 hash hash", "BD105 hash hash" },
              false,
              true },
        Edit{ "HashRenumbered",
              set( "/dynamic_hash_calculations/0/handle", "4" ),
              { "BD201 hash hash" },
              true,
              false } ),
    []( auto const& row ) { return row.param.name; } );

INSTANTIATE_TEST_SUITE_P(
    Unread, Edited,
    testing::Values(
        Edit{ "Key",
              set( "/tables/0/match_attributes/key_fields/0/bits", "31" ),
              { "BD307 table a" },
              true,
              true,
              false },
        Edit{ "Parameter",
              set( "/tables/0/actions/2/parameters/0/bits", "8" ),
              { "BD307 table a" },
              true,
              true,
              false },
        Edit{
            "Default", set( "/tables/0/default_action", "\"hit\"" ), { "BD307 table a" }, true, true, false },
        Edit{ "Memory",
              set( "/tables/0/match_attributes/stage_tables/0/memory/1", "3" ),
              { "BD307 table a" },
              true,
              true,
              false },
        Edit{ "StaticEntry",
              set( "/tables/2/static_entries/0/entry", "3" ),
              { "BD307 table fixed" },
              true,
              true,
              false },
        Edit{ "Condition",
              set( "/tables/3/source", "\"x == 2\"" ),
              { "BD307 table condition" },
              true,
              true,
              false },
        Edit{ "ConditionGone", drop( "/tables/3" ), { "BD307 table condition" }, true, true, false },
        Edit{ "InitialValue", set( "/tables/9/initial", "8" ), { "BD307 table cells" }, true, true, false },
        Edit{ "Parser", set( "/parser/states/1", "3" ), { "BD308 member parser" }, true, true, false },
        Edit{ "ContainerOfAField",
              set( "/phv_allocation/0/ingress/0/container", "4" ),
              { "BD308 member phv_allocation" },
              true,
              true,
              false },
        Edit{ "NewSection", set( "/more", "1" ), { "BD308 member more" }, true, true, false },
        Edit{ "FieldOfALearnQuanta",
              set( "/learn_quanta/0/fields/0/name", "\"g\"" ),
              { "BD308 member learn_quanta" },
              true,
              true,
              false },
        Edit{ "KeyOfARenumberedTable",
              all( { set( "/tables/0/match_attributes/key_fields/0/bits", "31" ),
                     set( "/tables/0/handle", "9" ), set( "/tables/0/actions/2/handle", "8" ),
                     set( "/tables/0/actions/2/parameters/0/bits", "8" ) } ),
              { "BD201 table a", "BD201 action miss of a", "BD307 table a" },
              true,
              false } ),
    []( auto const& row ) { return row.param.name; } );

class Pairs : public InFolder {};

TEST_F( Pairs, AreEqualHoweverTheyAreWritten ) {
    ContextBuilder const program = editedProgram();
    String spaced;
    bool isInText = false;
    for( char const c : program.text() ) {
        isInText ^= c == '"';
        spaced += c;
        if( !isInText && ( c == ',' || c == ':' || c == '[' ) )
            spaced += "\n\t ";
    }
    String escaped = program.text();
    escaped.replace( escaped.find( "\"cells\"" ), 7, "\"\\u0063ells\"" );
    ContextBuilder reordered = program;
    reordered.without( "/parser" );
    JsonTree front = reordered.tree();
    front.withFirst( "/parser", program.tree().at( "/parser" ) );
    for( String const& text : { spaced, escaped, front.text() } ) {
        auto const comparison = compared( program.text(), text );
        EXPECT_FALSE( comparison.differs() );
        EXPECT_THAT( verdictOf( comparison ).notices, IsEmpty() );
    }
}

TEST_F( Pairs, TellWhichTableTookAHandle ) {
    auto const tables = []( unsigned first, unsigned second ) {
        return contextOf( ::matchTable( "first", first ) + ", " + ::matchTable( "second", second ) );
    };
    auto const takers = [ & ]( String const& now ) {
        std::vector<String> names;
        for( Bfri::NewDuplicate const& duplicate : compared( tables( 1, 2 ), now ).duplicates )
            names.push_back( duplicate.name );
        return names;
    };
    EXPECT_THAT( takers( tables( 1, 1 ) ), ElementsAre( "second" ) );
    EXPECT_THAT( takers( tables( 2, 2 ) ), ElementsAre( "first" ) );
}

TEST_F( Pairs, TellWhichMembersDiffer ) {
    ContextBuilder program = editedProgram();
    program.with( "/tables/0/match_attributes/key_fields/0/bits", "31" )
        .with( "/tables/0/actions/2/parameters", "[]" );
    auto const tables = compared( editedProgram().text(), program.text() ).unread.tables;
    ASSERT_EQ( tables.size(), 1U );
    EXPECT_EQ( tables[ 0 ].name, "a" );
    EXPECT_THAT( tables[ 0 ].members, ElementsAre( "actions/miss", "match_attributes/key_fields" ) );
}

TEST_F( Pairs, TellRepeatedMembersApart ) {
    auto const withSecond = []( char const* value ) {
        JsonTree tree = editedProgram().tree();
        String text = tree.withFirst( "/parser", value )
                          .withFirst( "/tables/1/memory", value )
                          .withFirst( "/tables/1/memory", "1" )
                          .withFirst( "/tables/1/actions_x", value )
                          .text();
        text.replace( text.find( "actions_x" ), 9, "actions/x" );
        return text;
    };
    auto const unread = compared( withSecond( "1" ), withSecond( "2" ) ).unread;
    ASSERT_EQ( unread.tables.size(), 1U );
    EXPECT_THAT( unread.tables[ 0 ].members, ElementsAre( "actions/x", "memory (2)" ) );
    ASSERT_EQ( unread.members.size(), 1U );
    EXPECT_EQ( unread.members[ 0 ].name, "parser" );
}

TEST_F( Pairs, TellThatANameWentToAnotherTable ) {
    ContextBuilder program = editedProgram();
    program.with( "/tables/10/name", "\"b\"" ).without( "/tables/1" );
    auto const comparison = compared( editedProgram().text(), program.text() );
    ASSERT_EQ( comparison.handles.reused.size(), 2U ); // the table's and its action's
    EXPECT_EQ( comparison.handles.reused[ 0 ].handle, Support::handleOf( "plain" ) );
    EXPECT_EQ( comparison.handles.reused[ 0 ].from.label(), "plain" );
    EXPECT_EQ( comparison.handles.reused[ 0 ].to.label(), "b" );
    EXPECT_FALSE( verdictOf( comparison ).byHandle );
}

TEST_F( Pairs, WithoutRenamesReuseTheHandle ) {
    ContextBuilder program = editedProgram();
    program.with( "/tables/1/name", "\"bb\"" );
    auto const paired = compared( editedProgram().text(), program.text() );
    EXPECT_THAT( paired.handles.reused, IsEmpty() );
    EXPECT_TRUE( verdictOf( paired ).byHandle );
    auto const apart = compared( editedProgram().text(), program.text(), { .renames = false } );
    std::vector<String> former;
    for( auto const& reused : apart.handles.reused )
        former.push_back( reused.from.label() );
    EXPECT_THAT( former, testing::UnorderedElementsAre( "b", "set of b" ) );
    EXPECT_FALSE( verdictOf( apart ).byHandle );
}

} // namespace
