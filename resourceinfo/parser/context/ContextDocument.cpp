#include "resourceinfo/parser/context/ContextDocument.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/ContextReader.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <ostream>

#include <rapidjson/error/en.h>

namespace {

/// Of the gzip library; its own choice, 8 KiB, means a call of the system for every 16 KiB of a plain file.
constexpr unsigned inputBufferSize = 65536;

using GZFile = std::unique_ptr<gzFile_s, int ( * )( gzFile )>;

/// "line 3, column 14: REASON" for a character of the file; "character 40: REASON" when the file cannot be
/// read again.
String syntaxError( gzFile file, std::size_t offset, String const& reason ) {
    if( gzrewind( file ) != 0 )
        return "character " + std::to_string( offset ) + ": " + reason;
    std::size_t line = 1;
    std::size_t column = 1;
    for( std::size_t i = 0; i < offset; ++i ) {
        bool const lineEnd = gzgetc( file ) == '\n';
        line += lineEnd;
        column = lineEnd ? 1 : column + 1;
    }
    return "line " + std::to_string( line ) + ", column " + std::to_string( column ) + ": " + reason;
}

/// What the gzip library says of its last error, without the path that it puts in front.
String readError( gzFile file, String const& path ) {
    int error = Z_OK;
    String const text = gzerror( file, &error );
    String const prefix = path + ": ";
    return text.starts_with( prefix ) ? text.substr( prefix.size() ) : text;
}

} // namespace

ContextDocument::ContextDocument( String const& path ) : path_( path ) {
    lastJsonAccess() = {};
    read();
}

ContextDocument::~ContextDocument() { lastJsonAccess() = {}; }

void ContextDocument::read() {
    errno = 0;
    GZFile const file( gzopen( path_.c_str(), "r" ), gzclose );
    if( !file )
        return unreadable( "open", std::strerror( errno ) );
    std::array<char, 4096> buffer;
    gzbuffer( file.get(), inputBufferSize );
    GZFileReadStream stream( file.get(), buffer );
    rapidjson::Reader reader;
    PruningFilter filter( document_ );
    rapidjson::ParseResult result;
    auto parse = [ & ]( rapidjson::Document& ) {
        result = reader.Parse( stream, filter );
        // Damaged gzip shows as text that makes no sense, or behind a NUL, long before its checksum does.
        if( !result.IsError() || !gzdirect( file.get() ) )
            stream.drain();
        return !result.IsError() && !stream.failed();
    };
    document_.Populate( parse );
    if( stream.failed() )
        return unreadable( "read", readError( file.get(), path_ ) );
    if( result.IsError() )
        problem_ = syntaxError( file.get(), result.Offset(),
                                filter.depth().exceeded()
                                    ? "More than " + std::to_string( Depth::maximum ) + " levels of nesting."
                                    : rapidjson::GetParseError_En( result.Code() ) );
}

void ContextDocument::unreadable( char const* what, String const& reason ) {
    problem_ = String( "can't " ) + what + " it: " + reason;
    BF_TRACE( 0 ) << "Can't " << what << " context file " << path_ << ": " << reason;
}

void ContextDocument::describe( std::ostream& os ) const {
    os << "context file " << path_;
    if( problem_.empty() )
        describeLastAccess( os, document_ );
    else
        os << ": " << problem_;
}
