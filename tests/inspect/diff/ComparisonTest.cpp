#include "inspect/diff/Verdict.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Bfri::Comparison;
using Bfri::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

class Compared : public InFolder {
  protected:
    Compared() {
        for( auto const& model : { old, now } ) {
            model->parser().bfTablesPush( table( "acl", 1, 64 ) );
            model->parser().bfActionsPush( { 17, "permit", "acl" } );
        }
    }

    static BfTableInfo table( String const& name, U32 handle, U32 size ) {
        BfTableInfo record = named<BfTableInfo>( name, handle );
        record.size = size;
        return record;
    }
    Comparison comparison( Bfri::RecordKind const* only = nullptr ) const {
        return compare( *old, *now, { only } );
    }
    std::vector<Bfri::Notice> notices() const { return verdictOf( comparison() ).notices; }
    static Bfri::KindComparison const& of( Comparison const& comparison, Kind kind ) {
        return comparison.kinds.at( static_cast<std::size_t>( kind ) );
    }

    ConfigurationPtr const old = emptyModel();
    ConfigurationPtr const now = emptyModel();
};

TEST_F( Compared, AlikeDoNotDiffer ) {
    auto const result = comparison();
    EXPECT_FALSE( result.differs() );
    EXPECT_EQ( result.kinds.size(), Bfri::recordKinds().size() );
    EXPECT_EQ( of( result, Kind::tables ).same, 1U );
    EXPECT_THAT( notices(), IsEmpty() );
}

TEST_F( Compared, KnowWhatIsNewAndGone ) {
    old->parser().bfTablesPush( table( "gone", 2, 8 ) );
    now->parser().bfTablesPush( table( "new", 3, 8 ) );
    auto const result = comparison();
    auto const& tables = of( result, Kind::tables );
    ASSERT_EQ( tables.removed.size(), 1U );
    ASSERT_EQ( tables.added.size(), 1U );
    EXPECT_EQ( Bfri::valueAs<String>( tables.removed[ 0 ], "name" ), "gone" );
    EXPECT_EQ( Bfri::valueAs<String>( tables.added[ 0 ], "name" ), "new" );
    ASSERT_EQ( notices().size(), 2U );
    EXPECT_STREQ( notices()[ 0 ].kind->code, "BD101" );
    EXPECT_EQ( notices()[ 0 ].name, "gone" );
    EXPECT_STREQ( notices()[ 1 ].kind->code, "BD301" );
    EXPECT_EQ( notices()[ 1 ].name, "new" );
}

TEST_F( Compared, KnowFromWhatToWhatARecordHasChanged ) {
    old->parser().bfTablesPush( table( "lpm", 2, 512 ) );
    now->parser().bfTablesPush( table( "lpm", 2, 256 ) );
    auto const result = comparison();
    ASSERT_EQ( notices().size(), 1U );
    EXPECT_EQ( notices()[ 0 ].what, "table" );
    EXPECT_STREQ( notices()[ 0 ].kind->code, "BD104" );
    EXPECT_EQ( notices()[ 0 ].text, "size 512 -> 256" );
    auto const& fields = of( result, Kind::tables ).changed.at( 0 ).fields;
    ASSERT_EQ( fields.size(), 1U );
    EXPECT_EQ( fields[ 0 ].field, "size" );
    EXPECT_EQ( std::get<U32>( fields[ 0 ].from.is ), 512U );
    EXPECT_EQ( std::get<U32>( fields[ 0 ].to.is ), 256U );
}

TEST_F( Compared, FoldRenumberedHandles ) {
    old->parser().bfTablesPush( table( "lpm", 2, 8 ) );
    now->parser().bfTablesPush( table( "lpm", 5, 8 ) );
    auto const result = comparison();
    EXPECT_TRUE( result.differs() );
    EXPECT_EQ( of( result, Kind::tables ).same, 2U );
    ASSERT_EQ( result.handles.renumbered.size(), 1U );
    EXPECT_EQ( result.handles.renumbered[ 0 ].kind, Kind::tables );
    EXPECT_EQ( result.handles.renumbered[ 0 ].from, 2U );
    EXPECT_EQ( result.handles.renumbered[ 0 ].to, 5U );
    EXPECT_TRUE( verdictOf( result ).byName );
    EXPECT_FALSE( verdictOf( result ).byHandle );
}

TEST_F( Compared, MayBeOfOneKindOnly ) {
    now->parser().bfTablesPush( table( "new", 3, 8 ) );
    auto const result = comparison( &kindOf( Kind::actions ) );
    ASSERT_EQ( result.kinds.size(), 1U );
    EXPECT_EQ( result.kinds[ 0 ].kind->kind, Kind::actions );
    EXPECT_FALSE( result.differs() );
}

TEST_F( Compared, AreMembersOfAJsonObject ) {
    std::vector<String> members;
    for( Bfri::Field const& field : rowOf( comparison(), verdictOf( comparison() ) ) )
        members.emplace_back( field.name );
    EXPECT_THAT( members, ElementsAre( "pipes", "configuration", "kinds", "handles", "duplicates",
                                       "hitBitRanges", "unread", "verdict" ) );
}

} // namespace
