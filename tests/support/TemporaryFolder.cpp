#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <zlib.h>

namespace Support {

TemporaryFolder::TemporaryFolder() {
    path_ = ( std::filesystem::temp_directory_path() / "bfri-XXXXXX" ).string();
    if( !mkdtemp( path_.data() ) )
        throw std::runtime_error( "can't make a folder: " + path_ );
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all( path_, ignored );
}

std::string TemporaryFolder::path( std::string_view name ) const {
    return name.empty() ? path_ : ( std::filesystem::path( path_ ) / name ).string();
}

std::string TemporaryFolder::write( std::string_view name, std::string_view bytes ) const {
    std::filesystem::path const file = path( name );
    std::filesystem::create_directories( file.parent_path() );
    std::filesystem::remove( file ); // some file systems go to the disk when a file is overwritten
    std::ofstream stream( file, std::ios::binary );
    stream.write( bytes.data(), static_cast<std::streamsize>( bytes.size() ) );
    stream.close();
    if( !stream )
        throw std::runtime_error( "can't write " + file.string() );
    return file.string();
}

std::string TemporaryFolder::writeGzip( std::string_view name, std::string_view text ) const {
    return write( name, gzip( text ) );
}

void TemporaryFolder::remove( std::string_view name ) const {
    if( !std::filesystem::remove( path( name ) ) )
        throw std::runtime_error( "nothing to remove: " + path( name ) );
}

std::string gzip( std::string_view text ) {
    constexpr int gzipFormat = 15 + 16;
    z_stream stream{};
    if( deflateInit2( &stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, gzipFormat, 8, Z_DEFAULT_STRATEGY ) !=
        Z_OK )
        throw std::runtime_error( "can't compress" );
    std::string result( deflateBound( &stream, text.size() ), '\0' );
    std::string input( text );
    stream.next_in = reinterpret_cast<Bytef*>( input.data() );
    stream.avail_in = static_cast<uInt>( input.size() );
    stream.next_out = reinterpret_cast<Bytef*>( result.data() );
    stream.avail_out = static_cast<uInt>( result.size() );
    int const status = deflate( &stream, Z_FINISH );
    result.resize( stream.total_out );
    deflateEnd( &stream );
    if( status != Z_STREAM_END )
        throw std::runtime_error( "can't compress" );
    return result;
}

} // namespace Support
