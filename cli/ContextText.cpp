#include "cli/ContextText.h"

#include "cli/Nesting.h"

#include <algorithm>
#include <filesystem>

#include <rapidjson/document.h>
#include <zlib.h>

namespace Bfri {

namespace {

constexpr std::size_t chunk = std::size_t( 1 ) << 16;

/// Null for what is no regular file: a pipe would wait for its writer.
gzFile opened( String const& path ) {
    std::error_code error;
    return std::filesystem::is_regular_file( path, error ) ? gzopen( path.c_str(), "rb" ) : nullptr;
}

int closed( gzFile file ) { return file ? gzclose( file ) : Z_OK; }

bool isSpace( char c ) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

/// Whether a number or word is over.
bool endsWord( char c ) { return isSpace( c ) || c == ',' || c == ':' || c == ']' || c == '}' || c == '"'; }

String unescaped( String const& raw ) {
    rapidjson::Document text;
    text.Parse( ( '"' + raw + '"' ).c_str() );
    return text.IsString() ? String( text.GetString(), text.GetStringLength() ) : raw;
}

} // namespace

ContextText::ContextText( String const& path ) : file_( opened( path ), closed ), buffer_( chunk ) {
    if( file_ )
        gzbuffer( file_.get(), static_cast<unsigned>( chunk / 4 ) );
}

/// False at the end.
bool ContextText::fill() {
    before_ += end_;
    begin_ = end_ = 0;
    if( !file_ )
        return false;
    int const count = gzread( file_.get(), buffer_.data(), static_cast<unsigned>( buffer_.size() ) );
    end_ = static_cast<std::size_t>( std::max( count, 0 ) );
    return count > 0;
}

char ContextText::next() {
    char c = Peek();
    while( isSpace( c ) || c == ',' || c == ':' ) {
        ++begin_;
        c = Peek();
    }
    return c;
}

/// What comes of a string, up to its end or a backslash.
void ContextText::takePlain( String& text ) {
    do {
        char const* const from = buffer_.data() + begin_;
        char const* const end = buffer_.data() + end_;
        auto const to = std::find_if( from, end, []( char c ) { return c == '"' || c == '\\'; } );
        text.append( from, to );
        begin_ += static_cast<std::size_t>( to - from );
    } while( begin_ == end_ && fill() );
}

String ContextText::scalar() {
    char const first = next();
    String text;
    if( first == '{' || first == '[' ) {
        skip();
        return text;
    }
    if( first != '"' ) { // at least a character, so that no loop stands still on what is no JSON
        do
            text += Take();
        while( !atEnd() && !endsWord( Peek() ) );
        return text;
    }
    Take();
    bool hasEscapes = false;
    for( takePlain( text ); Peek() == '\\'; takePlain( text ) ) {
        hasEscapes = true;
        text += Take();
        text += Take();
    }
    Take();
    return hasEscapes ? unescaped( text ) : text;
}

void ContextText::skip() {
    char const first = next();
    if( first != '{' && first != '[' ) {
        scalar();
        return;
    }
    Take();
    for( Nesting nesting; nesting.isOpen() && !atEnd(); ) {
        char const* const from = buffer_.data() + begin_;
        begin_ += static_cast<std::size_t>( nesting.skip( from, buffer_.data() + end_ ) - from );
    }
}

} // namespace Bfri
