#include "zel/ByteEnum.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace Zel {

namespace {

std::optional<U8> find( TypeId type, std::string_view name ) {
    auto const& names = typeInfo( type ).enumerators;
    auto const found = std::find( names.begin(), names.end(), name );
    if( found == names.end() )
        return std::nullopt;
    return static_cast<U8>( found - names.begin() );
}

bool isNameCharacter( char c ) {
    return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= '0' && c <= '9' ) || c == '_';
}

} // namespace

U8 enumInstance( TypeId type, U32 value ) {
    if( value >= typeInfo( type ).enumerators.size() )
        throw std::out_of_range( typeInfo( type ).name + " has no value " + std::to_string( value ) );
    return static_cast<U8>( value );
}

U8 enumInstance( TypeId type, String const& name ) {
    if( auto const value = find( type, name ) )
        return *value;
    throw std::invalid_argument( typeInfo( type ).name + " has no enumerator \"" + name + "\"" );
}

String enumName( TypeId type, U8 value ) {
    auto const& names = typeInfo( type ).enumerators;
    return value < names.size() ? names[ value ] : std::to_string( value );
}

Result enumRead( TypeId type, std::string_view& range, U8& target ) {
    auto const end = std::find_if_not( range.begin(), range.end(), isNameCharacter );
    auto const length = static_cast<std::size_t>( end - range.begin() );
    auto const value = find( type, range.substr( 0, length ) );
    if( !value )
        return Result::failed;
    target = *value;
    range.remove_prefix( length );
    return Result::done;
}

} // namespace Zel
