#include "resourceinfo/parser/context/InputFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

namespace Context {

namespace {

/// Of the gzip library; its own choice, 8 KiB, means a call of the system for every 16 KiB of a plain file.
constexpr unsigned inputBufferSize = 65536;

/// Says why a file that is open is not to be read; nothing for one that is. A folder is: the first read says
/// what it is.
char const* objectionTo( int descriptor ) {
    struct stat status;
    if( fstat( descriptor, &status ) != 0 )
        return std::strerror( errno );
    return S_ISREG( status.st_mode ) || S_ISDIR( status.st_mode ) ? nullptr : "Not a regular file";
}

} // namespace

GzipFile::GzipFile() : file_( nullptr, gzclose ) {}

String GzipFile::open( String const& path ) {
    // Without O_NONBLOCK, opening a pipe waits for its writer.
    int const descriptor = ::open( path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC );
    if( descriptor < 0 )
        return std::strerror( errno );
    char const* objection = objectionTo( descriptor );
    if( !objection ) {
        file_.reset( gzdopen( descriptor, "r" ) );
        if( file_ ) {
            gzbuffer( file_.get(), inputBufferSize );
            return {};
        }
        objection = std::strerror( ENOMEM );
    }
    ::close( descriptor );
    return objection;
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
