#include "inspect/load/ContextText.h"

#include "inspect/load/Nesting.h"
#include "resourceinfo/parser/context/ByteScan.h"

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

using ByteScan::byte;

/// What stands between tokens and says nothing new.
constexpr auto isGap = []( auto c ) {
    return c == byte( ' ' ) || c == byte( '\n' ) || c == byte( '\r' ) || c == byte( '\t' ) ||
           c == byte( ',' ) || c == byte( ':' );
};

char const* findNoGap( char const* begin, char const* end ) {
    return ByteScan::find<ByteScan::Native>( begin, end, []( auto c ) { return !isGap( c ); } );
}

/// The end of a string's piece without escapes.
char const* findNoPlain( char const* begin, char const* end ) {
    return ByteScan::find<ByteScan::Native>( begin, end,
                                             []( auto c ) { return c == byte( '"' ) || c == byte( '\\' ); } );
}

/// The end of a number or word.
char const* findNoWord( char const* begin, char const* end ) {
    return ByteScan::find<ByteScan::Scalar>( begin, end, []( auto c ) {
        return isGap( c ) || c == byte( ']' ) || c == byte( '}' ) || c == byte( '"' );
    } );
}

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

/// Hands the characters up to the place that `find` finds to `piece`, in pieces.
template<class Find, class Piece>
void ContextText::takeUpTo( Find find, Piece piece ) {
    do {
        char const* const from = buffer_.data() + begin_;
        char const* const to = find( from, buffer_.data() + end_ );
        piece( from, to );
        begin_ += static_cast<std::size_t>( to - from );
    } while( begin_ == end_ && fill() );
}

/// Hands out the characters of the scalar that comes, of a string those between its quotes, as they stand.
/// Whether there are escapes among them.
template<class Piece>
bool ContextText::takeScalar( Piece piece ) {
    if( next() != '"' ) { // at least a character, so that no loop stands still on what is no JSON
        char const first = Take();
        piece( &first, &first + 1 );
        takeUpTo( findNoWord, piece );
        return false;
    }
    Take();
    bool hasEscapes = false;
    for( takeUpTo( findNoPlain, piece ); Peek() == '\\'; takeUpTo( findNoPlain, piece ) ) {
        hasEscapes = true;
        char const escape[] = { Take(), Take() };
        piece( std::begin( escape ), std::end( escape ) );
    }
    Take();
    return hasEscapes;
}

char ContextText::next() {
    takeUpTo( findNoGap, []( char const*, char const* ) {} );
    return Peek();
}

void ContextText::scalar( String& text ) {
    text.clear();
    if( char const first = next(); first == '{' || first == '[' )
        return skip();
    if( takeScalar( [ & ]( char const* from, char const* to ) { text.append( from, to ); } ) )
        text = unescaped( text );
}

void ContextText::skip() {
    char const first = next();
    if( first != '{' && first != '[' ) {
        takeScalar( []( char const*, char const* ) {} );
        return;
    }
    Take();
    for( Nesting nesting; nesting.isOpen() && !atEnd(); ) {
        char const* const from = buffer_.data() + begin_;
        begin_ += static_cast<std::size_t>( nesting.skip( from, buffer_.data() + end_ ) - from );
    }
}

} // namespace Bfri
