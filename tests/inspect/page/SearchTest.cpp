#include "inspect/page/Search.h"

#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Bfri::Kind;
using Bfri::Meaning;
using Bfri::SeveralRecords;
using testing::ElementsAre;

class Search : public InFolder {
  protected:
    Search() {
        auto& parser = model->parser();
        parser.bfTablesPush( named<BfTableInfo>( "in.acl", 1 ) );
        parser.bfTablesPush( named<BfTableInfo>( "in.lpm", 2 ) );
        parser.bfTablesPush( named<BfTableInfo>( "eg.lpm", 3 ) );
        BfTableInfo selecting = named<BfTableInfo>( "in.ecmp", 4 );
        selecting.selHandle = 99;
        selecting.maxSelGroups = 2;
        parser.bfTablesPush( selecting );
        parser.bfActionsPush( { 17, "permit", "in.acl" } );
        parser.bfActionsPush( { 18, "permit", "in.lpm" } );
        parser.bfActionsPush( { 19, "permit", "eg.lpm" } );
    }

    /// The names of the pages, or null.
    std::vector<String> pages( String const& word ) {
        std::vector<String> names;
        auto const found = Bfri::pagesFor( *model, word );
        for( Bfri::Page const& page : std::get<std::vector<Bfri::Page>>( found ) )
            names.push_back( page.name );
        return names;
    }
    template<class Result>
    Result insteadOfPages( String const& word ) {
        return std::get<Result>( Bfri::pagesFor( *model, word ) );
    }
    /// Keeps the rows that the result points to.
    Bfri::RecordFound record( Kind kind, String const& word ) {
        rows = kindOf( kind ).rows( model->parser() );
        return recordFor( model->parser(), kindOf( kind ), rows, word );
    }

    ConfigurationPtr const model = emptyModel();
    std::vector<Bfri::Row> rows;
};

TEST_F( Search, FindsAPageByNameByItsEndByHandleAndByActionAndTable ) {
    EXPECT_THAT( pages( "in.acl" ), ElementsAre( "in.acl" ) );
    EXPECT_THAT( pages( "acl" ), ElementsAre( "in.acl" ) );
    EXPECT_THAT( pages( "0x2" ), ElementsAre( "in.lpm" ) );
    EXPECT_THAT( pages( "permit of acl" ), ElementsAre( "permit" ) );
}

TEST_F( Search, OfAnActionOfATableHasThatAlone ) {
    auto const found = Bfri::pagesFor( *model, "permit of in.lpm" );
    auto const& page = std::get<std::vector<Bfri::Page>>( found ).at( 0 );
    ASSERT_EQ( page.sections.size(), 1U );
    ASSERT_EQ( page.sections[ 0 ].entries.size(), 1U );
    EXPECT_EQ( Bfri::valueAs<String>( page.sections[ 0 ].entries[ 0 ].record, "tableName" ), "in.lpm" );
}

TEST_F( Search, TellsTheAmbiguousFromTheMissing ) {
    auto const ambiguous = insteadOfPages<Meaning>( "lpm" );
    EXPECT_EQ( ambiguous.is, Meaning::Is::ambiguous );
    EXPECT_THAT( ambiguous.names, ElementsAre( "eg.lpm", "in.lpm" ) );
    auto const missing = insteadOfPages<Meaning>( "ack" );
    EXPECT_EQ( missing.is, Meaning::Is::missing );
    EXPECT_THAT( missing.names, ElementsAre( "in.acl" ) );
    auto const several = insteadOfPages<SeveralRecords>( "permit of lpm" );
    EXPECT_EQ( several.kind->kind, Kind::actions );
    EXPECT_EQ( several.count, 2U );
    EXPECT_THAT( several.words, ElementsAre( "permit of eg.lpm", "permit of in.lpm" ) );
}

TEST_F( Search, OfAHandleThatIsNobodysOwnHasThoseThatReferToIt ) {
    auto const only = insteadOfPages<Bfri::OnlyReferredTo>( "99" );
    EXPECT_EQ( only.handle, 99U );
    EXPECT_THAT( only.referrers, ElementsAre( "in.ecmp" ) );
}

TEST_F( Search, FindsARecordOfAKind ) {
    for( char const* const word : { "in.acl", "acl", "1", "0x1" } ) {
        auto const found = record( Kind::tables, word );
        EXPECT_EQ( std::get<Bfri::Row const*>( found ), &rows[ 0 ] ) << word;
    }
    auto const action = record( Kind::actions, "permit of eg.lpm" );
    EXPECT_EQ( std::get<Bfri::Row const*>( action ), &rows[ 2 ] );
    EXPECT_EQ( std::get<Meaning>( record( Kind::counters, "acl" ) ).is, Meaning::Is::missing );
}

TEST_F( Search, OfSeveralRecordsSaysWhatToTypeForEach ) {
    auto const actions = std::get<SeveralRecords>( record( Kind::actions, "permit" ) );
    EXPECT_EQ( actions.count, 3U );
    EXPECT_TRUE( actions.tellApart );
    EXPECT_THAT( actions.words, ElementsAre( "permit of eg.lpm", "permit of in.acl", "permit of in.lpm" ) );
    model->parser().bfTablesPush( named<BfTableInfo>( "in.acl", 8 ) );
    auto const tables = std::get<SeveralRecords>( record( Kind::tables, "in.acl" ) );
    EXPECT_THAT( tables.words, ElementsAre( "0x00000001", "0x00000008" ) );
    BfTableInfo larger = named<BfTableInfo>( "in.acl", 8 );
    larger.size = 5;
    model->parser().bfTablesPush( larger );
    auto const twins = std::get<SeveralRecords>( record( Kind::tables, "in.acl" ) );
    EXPECT_EQ( twins.count, 3U );
    EXPECT_FALSE( twins.tellApart );
}

TEST_F( Search, CountsRecordsThatAreTheSameAsOne ) {
    model->parser().bfTablesPush( named<BfTableInfo>( "in.acl", 1 ) );
    EXPECT_TRUE( std::holds_alternative<Bfri::Row const*>( record( Kind::tables, "in.acl" ) ) );
}

} // namespace
