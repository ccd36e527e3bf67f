#include "inspect/model/Names.h"
#include "inspect/model/RecordKinds.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>
#include <set>

namespace {

using Bfri::kindOf;
using Bfri::RecordKind;
using testing::ElementsAre;

class Kinds : public InFolder {};

TEST_F( Kinds, HaveNamesInTheirOrderEachPairOnce ) {
    auto const model = emptyModel();
    auto& parser = model->parser();
    parser.bfHeadersIs( "x", BfHeaderInfo( 1 ) );
    for( char const* const table : { "b", "x", "b" } )
        parser.bfTablesPush( named<BfTableInfo>( table ) );
    std::vector<std::pair<String, String>> pairs;
    for( auto const& [ name, kind ] : Bfri::namesOfKinds( parser ) )
        pairs.emplace_back( kind->many, name );
    EXPECT_THAT( pairs, ElementsAre( std::pair( "tables", "b" ), std::pair( "tables", "x" ),
                                     std::pair( "headers", "x" ) ) );
    EXPECT_THAT( Bfri::allNames( parser ), ElementsAre( "b", "x" ) );
}

TEST_F( Kinds, AreKnownByMemberAndBySingularAndPlural ) {
    std::set<Bfri::Kind> members;
    for( RecordKind const& kind : Bfri::recordKinds() ) {
        EXPECT_EQ( &kindOf( kind.kind ), &kind ) << kind.one;
        EXPECT_EQ( kindOf( kind.many ), &kind );
        EXPECT_EQ( kindOf( kind.one ), &kind );
        members.insert( kind.kind );
    }
    EXPECT_EQ( members.size(), Bfri::recordKinds().size() );
    EXPECT_EQ( members.size(), static_cast<std::size_t>( Bfri::Kind::handles ) + 1 );
    for( char const* const word : { "", "Table", "tabl", "table ", "summary" } )
        EXPECT_EQ( kindOf( word ), nullptr ) << word;
}

TEST_F( Kinds, SayWhatEachOfTheirFieldsMeans ) {
    for( RecordKind const& kind : Bfri::recordKinds() ) {
        std::vector<std::string_view> explained;
        std::vector<std::string_view> fields;
        for( Bfri::FieldInfo const& field : kind.fields() ) {
            EXPECT_STRNE( field.meaning, "" ) << kind.one << ' ' << field.name;
            explained.emplace_back( field.name );
        }
        for( Bfri::Field const& field : kind.blank() )
            fields.push_back( field.name );
        EXPECT_THAT( explained, testing::UnorderedElementsAreArray( fields ) ) << kind.one;
        EXPECT_THAT( fields, testing::Contains( "name" ) ) << kind.one;
    }
}

TEST_F( Kinds, HaveRowsWithTheFieldsOfTheBlankOne ) {
    auto const model = modelOf( completeContext() );
    for( RecordKind const& kind : Bfri::recordKinds() ) {
        auto const rows = kind.rows( model->parser() );
        ASSERT_FALSE( rows.empty() ) << kind.one;
        auto const sameName = []( Bfri::Field const& a, Bfri::Field const& b ) { return a.name == b.name; };
        auto const blank = kind.blank();
        EXPECT_TRUE( std::equal( rows[ 0 ].begin(), rows[ 0 ].end(), blank.begin(), blank.end(), sameName ) )
            << kind.one;
    }
}

TEST_F( Kinds, HaveAsManyRowsAsTheirCollections ) {
    auto const model = modelOf( completeContext() );
    std::set<String> members;
    for( RecordKind const& kind : Bfri::recordKinds() ) {
        std::size_t size = 0;
        for( Bfri::Collection const& collection : Bfri::collections() )
            size += collection.kind == kind.kind ? collection.size( model->parser() ) : 0;
        std::size_t const each =
            kind.kind == Bfri::Kind::phvFields ? 2 : 1; // the field is in both directions
        std::size_t const rows = each * kind.rows( model->parser() ).size();
        EXPECT_EQ( rows, size ) << kind.one;
        EXPECT_EQ( kind.size( model->parser() ), kind.rows( model->parser() ).size() ) << kind.one;
        members.insert( kind.member );
    }
    EXPECT_EQ( members.size(), Bfri::recordKinds().size() );
}

} // namespace
