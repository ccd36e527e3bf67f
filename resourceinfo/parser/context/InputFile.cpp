#include "resourceinfo/parser/context/InputFile.h"

#include "vessa/OpenFile.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <zlib.h>

namespace Context {

namespace {

/// Of the gzip library; its own choice, 8 KiB, means a call of the system for every 16 KiB of a plain file.
constexpr unsigned inputBufferSize = 65536;

} // namespace

GzipFile::GzipFile() : file_( nullptr, gzclose ) {}

String GzipFile::open( String const& path ) {
    auto const opened = Vessa::openRegularFile( path );
    if( opened.descriptor < 0 )
        return opened.reason;
    file_.reset( gzdopen( opened.descriptor, "r" ) );
    if( !file_ ) {
        ::close( opened.descriptor );
        return std::strerror( ENOMEM );
    }
    sizeOnDisk_ = opened.size;
    gzbuffer( file_.get(), inputBufferSize );
    return {};
}

int GzipFile::read( std::span<char> buffer ) {
    return gzread( file_.get(), buffer.data(), static_cast<unsigned>( buffer.size() ) );
}

bool GzipFile::rewind() { return gzrewind( file_.get() ) == 0; }

bool GzipFile::isCompressed() { return !gzdirect( file_.get() ); }

String GzipFile::error() {
    int code = Z_OK;
    String const text = gzerror( file_.get(), &code );
    if( code == Z_OK )
        return {};
    // The library puts its name of the file in front, "<fd:3>: ".
    auto const nameEnd = text.starts_with( '<' ) ? text.find( ": " ) : String::npos;
    return nameEnd == String::npos ? text : text.substr( nameEnd + 2 );
}

void GzipFile::close() { file_.reset(); }

} // namespace Context
