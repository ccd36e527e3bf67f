#include "inspect/page/Page.h"

#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Bfri::Kind;
using Bfri::Page;
using Bfri::pageOf;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<Kind> kindsOf( Page const& page ) {
    std::vector<Kind> kinds;
    for( Bfri::Section const& section : page.sections )
        kinds.push_back( section.kind->kind );
    return kinds;
}

/// "counters: hits" for each part that has rows; owners follow a "<".
std::vector<String> partsOf( Bfri::Entry const& entry ) {
    std::vector<String> parts;
    for( Bfri::Part const& part : entry.parts ) {
        String text = part.areOwners ? "<" : String( kindOf( part.kind ).many ) + ":";
        for( Bfri::Row const& row : part.rows )
            text += ' ' + Bfri::valueAs<String>( row, "name" );
        if( !part.rows.empty() )
            parts.push_back( text );
    }
    return parts;
}

class PageOfAName : public InFolder {
  protected:
    Page page( String const& name, std::optional<U32> handle = {} ) { return pageOf( *model, name, handle ); }

    Support::ContextBuilder context = referringContext();
    ConfigurationPtr model = modelOf( context );
};

TEST_F( PageOfAName, LinksATableWithAllThatItHas ) {
    Page const table = page( "pipe.acl" );
    EXPECT_EQ( table.name, "pipe.acl" );
    EXPECT_THAT( kindsOf( table ), ElementsAre( Kind::tables ) );
    Bfri::Entry const& entry = table.sections.at( 0 ).entries.at( 0 );
    EXPECT_TRUE( entry.placeable );
    ASSERT_NE( entry.place, nullptr );
    EXPECT_EQ( entry.place->name, "pipe.acl" );
    EXPECT_THAT( partsOf( entry ),
                 ElementsAre( "resources: pipe.acl members counter hits police bucket seen cells",
                              "counters: counter hits", "meters: police", "wreds: bucket",
                              "registers: seen cells", "actions: NoAction count" ) );
}

TEST_F( PageOfAName, LinksWhatATableHasBackToIt ) {
    for( char const* const name : { "counter", "hits", "police", "bucket", "seen", "cells" } ) {
        Page const one = page( name );
        ASSERT_EQ( one.sections.size(), 1U ) << name;
        EXPECT_THAT( partsOf( one.sections[ 0 ].entries.at( 0 ) ),
                     ElementsAre( "resources: " + String( name ), "< pipe.acl" ) );
    }
}

TEST_F( PageOfAName, HasAllTablesOfWhatSeveralHave ) {
    context.table( Support::matchTable( "pipe.lpm" ).actionData( "members" ).statistics( "counter" ) );
    model = modelOf( context );
    EXPECT_THAT( partsOf( page( "counter" ).sections.at( 0 ).entries.at( 0 ) ),
                 ElementsAre( "resources: counter", "< pipe.lpm pipe.acl" ) );
    EXPECT_THAT( partsOf( page( "members" ).sections.at( 0 ).entries.at( 0 ) ),
                 ElementsAre( "< pipe.acl pipe.lpm" ) );
}

TEST_F( PageOfAName, SaysWhyAPartIsEmpty ) {
    context.table( Support::actionDataTable( "direct" ) ).table( Support::statisticsTable( "lonely" ) );
    model = modelOf( context );
    auto const whyNoOwners = [ & ]( char const* name ) {
        Page const one = page( name );
        for( Bfri::Part const& part : one.sections.at( 0 ).entries.at( 0 ).parts ) {
            if( part.areOwners )
                return part.whyNone;
        }
        return Bfri::WhyNone::nothing;
    };
    EXPECT_EQ( whyNoOwners( "direct" ), Bfri::WhyNone::onlyIndirectActionData );
    EXPECT_EQ( whyNoOwners( "lonely" ), Bfri::WhyNone::unknown );
}

TEST_F( PageOfAName, IsOfAHandleAloneWhereThatIsAskedFor ) {
    EXPECT_THAT( kindsOf( page( "pipe.acl", Support::handleOf( "pipe.acl" ) ) ),
                 ElementsAre( Kind::tables ) );
    EXPECT_THAT( kindsOf( page( "pipe.acl", 7 ) ), IsEmpty() );
    EXPECT_THAT( kindsOf( page( "nothing" ) ), IsEmpty() );
}

TEST_F( PageOfAName, CountsTheRecordsThatItDoesNotShow ) {
    auto const many = emptyModel();
    for( U32 handle = 1; handle <= 10; ++handle )
        many->parser().bfTablesPush( named<BfTableInfo>( "acl", handle ) );
    Page const full = pageOf( *many, "acl" );
    EXPECT_EQ( full.sections.at( 0 ).entries.size(), 8U );
    EXPECT_EQ( full.sections.at( 0 ).moreRecords, 2U );
    auto const row = rowOf( std::vector{ full } );
    EXPECT_EQ( Bfri::valueAs<U32>( Bfri::valueAs<Bfri::Row>( row, "moreRecords" ), "bfTables" ), 2U );
}

} // namespace
