#include "OutputFile.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

namespace bfgen {

namespace {

[[noreturn]] void throwErrno( std::filesystem::path const& path ) {
    throw std::runtime_error( "can't write " + path.string() + ": " + std::strerror( errno ) );
}

/// "T" makes the gzip library write the bytes as they are, so that both kinds of file go one way.
char const* openMode( bool gzip ) { return gzip ? "wb6" : "wbT"; }

} // namespace

OutputFile::OutputFile( std::filesystem::path path, bool gzip )
    : path_( std::move( path ) ), file_( gzopen( path_.c_str(), openMode( gzip ) ) ) {
    if( file_ == nullptr ) {
        throwErrno( path_ );
    }
}

OutputFile::~OutputFile() {
    if( file_ != nullptr ) {
        gzclose( file_ );
        std::error_code ignored;
        std::filesystem::remove( path_, ignored );
    }
}

void OutputFile::close() {
    drain();
    if( gzflush( file_, Z_FINISH ) != Z_OK ) {
        fail();
    }
    int const result = gzclose( std::exchange( file_, nullptr ) );
    if( result != Z_OK ) {
        throwErrno( path_ );
    }
}

void OutputFile::drain() {
    auto const length = static_cast<unsigned>( std::exchange( used_, 0 ) );
    if( length != 0 && gzwrite( file_, buffer_.data(), length ) != static_cast<int>( length ) ) {
        fail();
    }
}

void OutputFile::fail() {
    int code = Z_OK;
    // The gzip library's text starts with the name of the file.
    throw std::runtime_error( std::string( "can't write " ) + gzerror( file_, &code ) );
}

} // namespace bfgen
