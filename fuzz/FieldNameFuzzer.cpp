// Any bytes as a field name: normalised in two passes over it, as the rule is told, it must come out the
// same.

#include "fuzz/Target.h"
#include "resourceinfo/parser/BfResourceParser.h"

#include <string_view>

namespace {

/// Every "$" with the digits after it becomes "_1_".
String withoutNumbers( String const& name ) {
    constexpr std::string_view digits = "0123456789";
    String result;
    for( std::size_t i = 0; i < name.size(); ) {
        std::size_t const end = std::min( name.find_first_not_of( digits, i + 1 ), name.size() );
        bool const numbered = name[ i ] == '$' && end > i + 1;
        result += numbered ? String( "_1_" ) : name.substr( i, 1 );
        i = numbered ? end : i + 1;
    }
    return result;
}

String withoutSeparators( String name ) {
    for( std::size_t i = 0; ( i = name.find_first_of( ".[]", i ) ) != String::npos; )
        name[ i ] = '_';
    return name;
}

} // namespace

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    static auto const parser = BfResourceInfo::bfResourceParserFactory( "" );
    String const name( reinterpret_cast<char const*>( data ), size );
    String const normalized = parser->normalizeFieldName( name );
    require( normalized == withoutSeparators( withoutNumbers( name ) ), "not what the two passes give" );
    require( parser->normalizeFieldName( normalized ) == normalized, "not the same when normalised again" );
    return 0;
}
