#include "fuzz/GzipText.h"

#include "fuzz/Target.h"

#include <array>
#include <zlib.h>

namespace {

constexpr int gzipFormat = 15 + 16;

/// Inflates one member at the front of a file, and moves the front past it.
bool unpackMember( std::span<std::uint8_t const>& file, std::size_t most, std::string& text,
                   std::string& reason ) {
    z_stream stream{};
    require( inflateInit2( &stream, gzipFormat ) == Z_OK, "no memory to inflate" );
    stream.next_in = const_cast<Bytef*>( file.data() );
    stream.avail_in = static_cast<uInt>( file.size() );
    std::array<Bytef, 4096> buffer;
    int status = Z_OK;
    while( status == Z_OK && text.size() <= most ) {
        stream.next_out = buffer.data();
        stream.avail_out = buffer.size();
        status = inflate( &stream, Z_NO_FLUSH );
        text.append( reinterpret_cast<char const*>( buffer.data() ), buffer.size() - stream.avail_out );
    }
    file = file.last( stream.avail_in );
    reason = stream.msg ? stream.msg : "";
    inflateEnd( &stream );
    return status == Z_STREAM_END && text.size() <= most;
}

} // namespace

bool isGzip( std::span<std::uint8_t const> file ) {
    return file.size() >= 2 && file[ 0 ] == 0x1f && file[ 1 ] == 0x8b;
}

std::optional<std::string> unpacked( std::span<std::uint8_t const> file, std::size_t most ) {
    if( !isGzip( file ) )
        return std::string( file.begin(), file.end() );
    std::string text;
    std::string reason;
    while( isGzip( file ) ) {
        if( !unpackMember( file, most, text, reason ) )
            return std::nullopt;
    }
    return text;
}

bool hasRefusedCode( std::span<std::uint8_t const> file ) {
    std::string text;
    std::string reason;
    while( isGzip( file ) && unpackMember( file, text.max_size(), text, reason ) )
        text.clear();
    return reason == "invalid literal/lengths set" || reason == "invalid distances set";
}

std::string packed( std::string const& text, int level ) {
    z_stream stream{};
    require( deflateInit2( &stream, level, Z_DEFLATED, gzipFormat, 8, Z_DEFAULT_STRATEGY ) == Z_OK,
             "no memory to deflate" );
    std::string member( deflateBound( &stream, text.size() ), '\0' );
    stream.next_in = reinterpret_cast<Bytef*>( const_cast<char*>( text.data() ) );
    stream.avail_in = static_cast<uInt>( text.size() );
    stream.next_out = reinterpret_cast<Bytef*>( member.data() );
    stream.avail_out = static_cast<uInt>( member.size() );
    int const status = deflate( &stream, Z_FINISH );
    member.resize( stream.total_out );
    deflateEnd( &stream );
    require( status == Z_STREAM_END, "not deflated at once" );
    return member;
}
