#include "inspect/load/ContextText.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Bfri::ContextText;
using testing::ElementsAre;
using testing::IsEmpty;

class GoingThroughAContextText : public InFolder {
  protected:
    /// The members of the object that a text is, with their scalars; containers are passed over.
    static std::vector<String> membersOf( String const& content ) {
        writeFile( "text", content );
        ContextText text( "text" );
        std::vector<String> members;
        text.eachMember( [ & ]( String const& name ) { members.push_back( name + "=" + text.scalar() ); } );
        EXPECT_TRUE( text.atEnd() ) << content.substr( 0, 100 );
        return members;
    }
};

TEST_F( GoingThroughAContextText, GivesMembersAndTheirScalars ) {
    EXPECT_THAT( membersOf( R"({"a":1,"b" : "x\ty\u00e9" , "c":true,"d":null,"e":-1.5e3,"f":""})" ),
                 ElementsAre( "a=1", "b=x\ty\u00e9", "c=true", "d=null", "e=-1.5e3", "f=" ) );
    EXPECT_THAT( membersOf( "{}" ), IsEmpty() );
}

TEST_F( GoingThroughAContextText, GivesEveryElement ) {
    writeFile( "text", R"([ 1, "b", [ 2 ], { "c": 3 }, [], {}, null ])" );
    ContextText text( "text" );
    std::vector<String> elements;
    text.eachElement( [ & ] { elements.push_back( text.scalar() ); } );
    EXPECT_THAT( elements, ElementsAre( "1", "b", "", "", "", "", "null" ) );
}

/// Containers of all lengths, so that their ends and what stands in them fall on every place of a block, and
/// of the buffer's end.
TEST_F( GoingThroughAContextText, PassesOverWhateverStandsInAContainer ) {
    constexpr std::size_t nearBufferEnd = 65536 - 100;
    for( char const* const inside : { "1", "[[{}]]", R"("]}")", R"("\"]}")", R"("\\",{"b":"]"})",
                                      R"("\\\"]")", R"({"[":"{","]":"}"})", R"("\\"],"z":["\\")" } ) {
        bool const hasTwo = String( inside ).find( "\"z\"" ) != String::npos;
        for( std::size_t i = 0; i < 130; ++i ) {
            for( std::size_t const padding : { i, nearBufferEnd + i } ) {
                for( char const filler : { ' ', 'x' } ) {
                    String const front =
                        filler == ' ' ? String( padding, ' ' ) : '"' + String( padding, 'x' ) + "\",";
                    auto const members = membersOf( R"({"a":[)" + front + inside + R"(],"n":7})" );
                    ASSERT_EQ( members.size(), hasTwo ? 3U : 2U ) << padding << inside;
                    ASSERT_EQ( members.back(), "n=7" ) << padding << inside;
                }
            }
        }
    }
}

TEST_F( GoingThroughAContextText, EndsWhereTheFileEnds ) {
    for( char const* const text : { "", "{", R"({"a)", R"({"a\)", R"({"a":)", R"({"a":[)", R"({"a":[{"b":"c)",
                                    R"({"a":[{"b":"c\)", R"({"a":1)", "[1,2", "]", "}", "1", "\"" } )
        EXPECT_LT( membersOf( text ).size(), 2U ) << text;
    EXPECT_TRUE( ContextText( "none" ).atEnd() );
}

TEST_F( GoingThroughAContextText, PassesOverAValueOfAnotherType ) {
    writeFile( "text", R"({"a":[1],"b":{"x":2},"c":3})" );
    ContextText text( "text" );
    std::vector<String> names;
    auto const fail = []( auto const&... ) { ADD_FAILURE(); };
    text.eachMember( [ & ]( String const& name ) {
        names.push_back( name );
        if( name == "a" )
            text.eachMember( fail );
        else
            text.eachElement( fail );
    } );
    EXPECT_THAT( names, ElementsAre( "a", "b", "c" ) );
}

} // namespace
