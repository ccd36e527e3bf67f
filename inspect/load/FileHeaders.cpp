#include "inspect/load/FileHeaders.h"

#include "inspect/load/FileTables.h"

namespace Bfri {

namespace {

std::uint64_t sliceBits( FirstMembers& text ) {
    std::uint64_t bits = 0;
    text.eachMember( [ & ]( std::string_view member ) {
        if( member == "bit_width" )
            bits = static_cast<std::uint64_t>( wholeNumber( text.literal() ).value_or( 0 ) );
        else
            text.walk();
    } );
    return bits;
}

std::uint64_t fieldBits( FirstMembers& text ) {
    std::uint64_t bits = 0;
    text.eachMember( [ & ]( std::string_view member ) {
        if( member == "slice" )
            bits = sliceBits( text );
        else
            text.walk();
    } );
    return bits;
}

} // namespace

HeaderBits headerBits( FirstMembers& text ) {
    HeaderBits header;
    text.eachMember( [ & ]( std::string_view member ) {
        if( member == "name" )
            header.name = text.scalar();
        else if( member == "fields" )
            text.eachElement( [ & ] { header.bits += fieldBits( text ); } );
        else
            text.walk();
    } );
    return header;
}

std::vector<HeaderBits> headersOf( String const& contextFile ) {
    std::vector<HeaderBits> headers;
    ContextText text( contextFile );
    FirstMembers file = passedMembers( text );
    file.eachMember( [ & ]( std::string_view section ) {
        if( section == "flexible_headers" )
            file.eachElement( [ & ] { headers.push_back( headerBits( file ) ); } );
        else
            text.skip();
    } );
    return headers;
}

} // namespace Bfri
