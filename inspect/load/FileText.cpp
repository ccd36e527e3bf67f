#include "inspect/load/FileText.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <unistd.h>
#include <zlib.h>

namespace Bfri {

namespace {

/// Null for what is no regular file: a pipe would wait for its writer.
gzFile opened( String const& path ) {
    std::error_code error;
    return std::filesystem::is_regular_file( path, error ) ? gzopen( path.c_str(), "rb" ) : nullptr;
}

int closed( gzFile file ) { return file ? gzclose( file ) : Z_OK; }

} // namespace

FileText::FileText( String const& path ) : file_( opened( path ), closed ), buffer_( 65536 ) {}

char FileText::Take() {
    char const c = Peek();
    if( begin_ == end_ )
        return c;
    ++begin_;
    if( c == '\n' )
        ++line_;
    return c;
}

/// False at the end.
bool FileText::fill() {
    before_ += end_;
    begin_ = end_ = 0;
    int const count =
        file_ ? gzread( file_.get(), buffer_.data(), static_cast<unsigned>( buffer_.size() ) ) : 0;
    end_ = static_cast<std::size_t>( std::max( count, 0 ) );
    return count > 0;
}

String whyUnreadable( String const& path ) { // without opening it: it may be a pipe
    std::error_code ignored;
    if( std::filesystem::is_directory( path, ignored ) )
        return std::strerror( EISDIR );
    return ::access( path.c_str(), R_OK ) == 0 ? "" : std::strerror( errno );
}

} // namespace Bfri
