#include "resourceinfo/parser/context/ZlibFile.h"

#include "vessa/OpenFile.h"

#include <new>
#include <unistd.h>
#include <zlib.h>

namespace Context {

namespace {

/// Of the gzip library; its own choice, 8 KiB, means a call of the system for every 16 KiB of a plain file.
constexpr unsigned inputBufferSize = 65536;

} // namespace

ZlibFile::ZlibFile() : file_( nullptr, gzclose ) {}

String ZlibFile::open( String const& path ) {
    auto const opened = Vessa::openRegularFile( path );
    if( opened.descriptor < 0 )
        return opened.reason;
    file_.reset( gzdopen( opened.descriptor, "r" ) );
    if( !file_ ) {
        ::close( opened.descriptor );
        throw std::bad_alloc();
    }
    sizeOnDisk_ = opened.size;
    gzbuffer( file_.get(), inputBufferSize );
    return {};
}

int ZlibFile::read( std::span<char> buffer ) {
    int const count = gzread( file_.get(), buffer.data(), static_cast<unsigned>( buffer.size() ) );
    int code = Z_OK;
    if( count < 0 && gzerror( file_.get(), &code ) && code == Z_MEM_ERROR )
        throw std::bad_alloc();
    return count;
}

bool ZlibFile::rewind() { return gzrewind( file_.get() ) == 0; }

bool ZlibFile::isCompressed() { return !gzdirect( file_.get() ); }

String ZlibFile::error() {
    int code = Z_OK;
    String const text = gzerror( file_.get(), &code );
    if( code == Z_OK )
        return {};
    // The library puts its name of the file in front, "<fd:3>: ".
    auto const nameEnd = text.starts_with( '<' ) ? text.find( ": " ) : String::npos;
    return nameEnd == String::npos ? text : text.substr( nameEnd + 2 );
}

void ZlibFile::close() { file_.reset(); }

} // namespace Context
