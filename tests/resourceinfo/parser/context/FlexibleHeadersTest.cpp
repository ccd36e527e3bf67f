#include "resourceinfo/parser/context/FlexibleHeaders.h"
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

char const* const noWholeBytes = "header.size() % 8 == 0";
char const* const otherSize = "parser->bfHeaders( hdrName ) == header";

/// A header with fields of these widths.
JsonTree header( std::string_view name, std::initializer_list<char const*> widths ) {
    JsonTree result = JsonTree::object().with( "/name", JsonTree::string( name ) ).with( "/fields", "[]" );
    for( char const* width : widths )
        result.with( "/fields/-", JsonTree( R"({ "slice": {} })" ).with( "/slice/bit_width", width ) );
    return result;
}

class FlexibleHeaders : public testing::Test {
  protected:
    void run( std::initializer_list<JsonTree> headers ) {
        auto context = ContextBuilder().with( "/flexible_headers", "[]" );
        for( JsonTree const& each : headers )
            context.with( "/flexible_headers/-", each );
        ParsedJson const d( context.text() );
        parseFlexibleHeaders( parser_.get(), d.json(), {} );
    }
    /// The size of a header with fields of these widths.
    U16 sizeOf( std::initializer_list<char const*> widths ) {
        parser_->bfHeadersDelAll();
        run( { header( "h", widths ) } );
        EXPECT_TRUE( parser_->bfHeadersHas( "h" ) );
        return parser_->bfHeaders( "h" ).size();
    }
    String conditionOf( std::initializer_list<JsonTree> headers ) {
        return Support::conditionOf( [ & ] { run( headers ); } );
    }

    Zel::Ptr<BfResourceParser> parser_ = emptyParser();
};

TEST_F( FlexibleHeaders, SizeIsTheSumOfTheFieldsInBytes ) {
    EXPECT_EQ( sizeOf( { "8", "16", "8" } ), 4 );
    EXPECT_EQ( sizeOf( { "3", "5" } ), 1 ) << "only the sum must be whole bytes";
    EXPECT_EQ( sizeOf( { "112" } ), 14 );
    EXPECT_EQ( sizeOf( { "0", "0" } ), 0 );
    EXPECT_EQ( sizeOf( {} ), 0 );
}

TEST_F( FlexibleHeaders, SumKeepsItsLow16Bits ) {
    EXPECT_EQ( sizeOf( { "65528" } ), 8191 );
    EXPECT_EQ( sizeOf( { "65536" } ), 0 );
    EXPECT_EQ( sizeOf( { "65544" } ), 1 );
    EXPECT_EQ( sizeOf( { "65535", "9" } ), 1 );
    EXPECT_EQ( sizeOf( { "40000", "40000" } ), 1808 );
    EXPECT_EQ( sizeOf( { "24", "-8" } ), 2 );
    EXPECT_EQ( sizeOf( { "-8" } ), 8191 );
    EXPECT_EQ( sizeOf( { "9223372036854775807", "1" } ), 0 );
    EXPECT_EQ( sizeOf( { "-9223372036854775808", "16" } ), 2 );
    EXPECT_EQ( sizeOf( { "9223372036854775807", "9223372036854775807", "10" } ), 1 );
}

TEST_F( FlexibleHeaders, BitsThatMakeNoWholeBytesAreFatal ) {
    EXPECT_EQ( conditionOf( { header( "h", { "8", "4" } ) } ), noWholeBytes );
    EXPECT_EQ( conditionOf( { header( "h", { "65537" } ) } ), noWholeBytes );
    EXPECT_EQ( conditionOf( { header( "h", { "-1" } ) } ), noWholeBytes );
    EXPECT_TRUE( parser_->bfHeaders().empty() );
}

TEST_F( FlexibleHeaders, MayBeMetAgainWithTheirSize ) {
    run( { header( "eth", { "112" } ), header( "ipv6", { "320" } ), header( "eth", { "48", "64" } ) } );
    run( { header( "eth", { "112" } ) } );
    EXPECT_EQ( parser_->bfHeaders().size(), 2 );
    EXPECT_EQ( parser_->bfHeaders( "eth" ).size(), 14 );
    EXPECT_EQ( parser_->bfHeaders( "ipv6" ).size(), 40 );
}

TEST_F( FlexibleHeaders, OfAnotherSizeAreFatalInOneFileAndInSeveral ) {
    EXPECT_EQ( conditionOf( { header( "eth", { "112" } ), header( "eth", { "120" } ) } ), otherSize );
    EXPECT_EQ( parser_->bfHeaders( "eth" ).size(), 14 );
    EXPECT_EQ( conditionOf( { header( "new", { "8" } ), header( "eth", { "104" } ) } ), otherSize );
    EXPECT_EQ( parser_->bfHeaders( "eth" ).size(), 14 );
    EXPECT_EQ( parser_->bfHeaders( "new" ).size(), 1 );
}

TEST_F( FlexibleHeaders, StoredSizeOfNothingCounts ) {
    run( { header( "empty", {} ) } );
    EXPECT_EQ( conditionOf( { header( "empty", { "8" } ) } ), otherSize );
    EXPECT_EQ( conditionOf( { header( "full", { "8" } ), header( "full", {} ) } ), otherSize );
    run( { header( "empty", { "0" } ) } );
    EXPECT_EQ( parser_->bfHeaders( "empty" ).size(), 0 );
    EXPECT_EQ( parser_->bfHeaders( "full" ).size(), 1 );
}

TEST_F( FlexibleHeaders, NameEndsAtItsFirstNul ) {
    run( { header( "x", { "8" } ).with( "/name", R"("eth\u0000x")" ) } );
    EXPECT_TRUE( parser_->bfHeadersHas( "eth" ) );
}

TEST_F( FlexibleHeaders, DocumentWithoutThemHasNoneAndNoPass ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    ParsedJson const d( ContextBuilder().text() );
    parseFlexibleHeaders( parser_.get(), d.json(), {} );
    EXPECT_TRUE( parser_->bfHeaders().empty() );
    EXPECT_THAT( trace.texts(), ElementsAre() );
}

TEST_F( FlexibleHeaders, OnlyThePassIsTraced ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    run( { header( "eth", { "112" } ) } );
    ASSERT_THAT( trace.texts(), ElementsAre( "Parsing flexible headers" ) );
    EXPECT_EQ( trace.lines()[ 0 ].level, 6 );
}

TEST_F( FlexibleHeaders, PassIsTracedBeforeItsListIsRead ) {
    Support::TraceCollector const trace( "BfResourceParser", { 6 } );
    ParsedJson const d( ContextBuilder().with( "/flexible_headers", "null" ).text() );
    EXPECT_EQ( Support::conditionOf( [ & ] { parseFlexibleHeaders( parser_.get(), d.json(), {} ); } ),
               noArray );
    EXPECT_THAT( trace.texts(), ElementsAre( "Parsing flexible headers" ) );
}

TEST( FlexibleHeaderFaults, InTheirOrder ) {
    auto const context = ContextBuilder().with( "/flexible_headers", "[]" );
    auto const two = ContextBuilder( context )
                         .with( "/flexible_headers/-", header( "eth", { "8", "16" } ) )
                         .with( "/flexible_headers/-", header( "eth", { "24" } ) );
    expectFaults( two.tree(),
                  {
                      { "", "null", noObject },
                      { "/flexible_headers", "null", noArray },
                      { "/flexible_headers", "{}", noArray },
                      { "/flexible_headers/0", "null", noObject },
                      { "/flexible_headers/0", "[]", noObject },
                      { "/flexible_headers/0/name", removed, noMember },
                      { "/flexible_headers/0/name", "null", noString },
                      { "/flexible_headers/0/name", "7", noString },
                      { "/flexible_headers/0/fields", removed, noMember },
                      { "/flexible_headers/0/fields", "null", noArray },
                      { "/flexible_headers/0/fields", "{}", noArray },
                      { "/flexible_headers/0/fields/0", "null", noObject },
                      { "/flexible_headers/0/fields/0/slice", removed, noMember },
                      { "/flexible_headers/0/fields/0/slice", "null", noObject },
                      { "/flexible_headers/0/fields/0/slice", "[]", noObject },
                      { "/flexible_headers/0/fields/0/slice/bit_width", removed, noMember },
                      { "/flexible_headers/0/fields/0/slice/bit_width", "null", noInteger },
                      { "/flexible_headers/0/fields/0/slice/bit_width", "8.0", noInteger },
                      { "/flexible_headers/0/fields/0/slice/bit_width", "\"8\"", noInteger },
                      { "/flexible_headers/0/fields/0/slice/bit_width", "9223372036854775808", noInteger },
                      { "/flexible_headers/0/fields/1/slice/bit_width", "true", noInteger },
                      { "/flexible_headers/0/fields/1/slice/bit_width", "9", noWholeBytes },
                      { "/flexible_headers/1", "1", noObject },
                      { "/flexible_headers/1/name", "{}", noString },
                      { "/flexible_headers/1/fields/0", "[]", noObject },
                      { "/flexible_headers/1/fields/0/slice/bit_width", "25", noWholeBytes },
                      { "/flexible_headers/1/fields/0/slice/bit_width", "32", otherSize },
                  },
                  []( Json d ) {
                      auto const parser = emptyParser();
                      parseFlexibleHeaders( parser.get(), d, {} );
                  } );
}

} // namespace
} // namespace BfResourceInfo
