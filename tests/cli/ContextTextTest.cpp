#include "cli/ContextText.h"
#include "tests/cli/Inputs.h"

namespace {

using Bfri::ContextText;

constexpr std::string_view names[] = { "table_type", "direction", "phv_allocation", "flexible_headers" };
constexpr std::size_t none = std::size( names );

class SkippingToAName : public InFolder {
  protected:
    /// The places behind the colons of the names in a text, and which names they are.
    static std::vector<std::pair<std::size_t, std::size_t>> foundIn( String const& content ) {
        writeFile( "text", content );
        ContextText text( "text" );
        std::vector<std::pair<std::size_t, std::size_t>> found;
        for( std::size_t name = 0; ( name = text.skipToName( names ) ) != none; )
            found.emplace_back( text.Tell(), name );
        EXPECT_TRUE( text.atEnd() );
        return found;
    }
    using Found = decltype( foundIn( "" ) );
};

TEST_F( SkippingToAName, FindsItWhereverItStands ) {
    constexpr std::size_t nearBufferEnd = 65536 - 30;
    String const member = "\"direction\" :";
    for( char const padding : { ' ', '"', 'd' } ) {
        for( std::size_t i = 0; i < 40; ++i ) {
            for( std::size_t const offset : { i, nearBufferEnd + i } ) {
                String const first = String( offset, padding ) + member;
                String const both = first + "1," + member;
                EXPECT_EQ( foundIn( both + "2" ), ( Found{ { first.size(), 1 }, { both.size(), 1 } } ) )
                    << offset << " times " << padding;
            }
        }
    }
}

TEST_F( SkippingToAName, TellsTheNamesApart ) {
    EXPECT_EQ( foundIn( R"({"flexible_headers":1,"phv_allocation":2,"direction":3,"table_type":4})" ),
               ( Found{ { 20, 3 }, { 39, 2 }, { 53, 1 }, { 68, 0 } } ) );
}

TEST_F( SkippingToAName, PassesOverWhatIsNoMember ) {
    for( char const* const text :
         { R"({"directions":1})", R"({"irection":1})", R"({"a direction":1})", R"({"a":"direction"})",
           R"({"a":"\"direction\":1"})", R"({"a\"direction":1})", R"(["direction","table_type"])",
           R"({"direction)", R"({"direction")", R"({"Direction":1})", R"("d)", R"(")", "" } )
        EXPECT_EQ( foundIn( text ), Found() ) << text;
}

} // namespace
