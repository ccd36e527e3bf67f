#include "cli/ContextText.h"

#include <algorithm>
#include <array>
#include <filesystem>

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

} // namespace

ContextText::ContextText( String const& path ) : file_( opened( path ), closed ), buffer_( chunk ) {
    if( file_ )
        gzbuffer( file_.get(), static_cast<unsigned>( chunk / 4 ) );
}

/// Reads on, behind the last characters that are to be kept; false at the end.
bool ContextText::fill( std::size_t kept ) {
    std::size_t const from = end_ - std::min( kept, end_ );
    std::copy( buffer_.begin() + static_cast<std::ptrdiff_t>( from ),
               buffer_.begin() + static_cast<std::ptrdiff_t>( end_ ), buffer_.begin() );
    before_ += from;
    begin_ = end_ = end_ - from;
    if( !file_ )
        return false;
    int const count =
        gzread( file_.get(), buffer_.data() + end_, static_cast<unsigned>( buffer_.size() - end_ ) );
    end_ += static_cast<std::size_t>( std::max( count, 0 ) );
    return count > 0;
}

ContextText::Match ContextText::firstOf( std::span<String const> texts, std::size_t from ) const {
    std::array<bool, 256> isSecond = {}; // characters behind the quotes: few of them are left to compare
    for( String const& text : texts )
        isSecond[ static_cast<unsigned char>( text[ 1 ] ) ] = true;
    std::string_view const buffer( buffer_.data(), end_ );
    for( std::size_t at = from; ( at = buffer.find( '"', at ) ) != std::string_view::npos; ++at ) {
        std::string_view const rest = buffer.substr( at );
        if( rest.size() < 2 || !isSecond[ static_cast<unsigned char>( rest[ 1 ] ) ] )
            continue;
        for( std::size_t i = 0; i < texts.size(); ++i ) {
            if( rest.starts_with( texts[ i ] ) )
                return { i, at };
        }
    }
    return { texts.size(), end_ };
}

bool ContextText::takeColon() {
    while( std::string_view( " \t\r\n" ).find( Peek() ) != std::string_view::npos )
        Take();
    bool const there = Peek() == ':';
    if( there )
        Take();
    return there;
}

// In valid JSON a name in quotes with a colon behind it is a member's: a quote within a string has a
// backslash in front.
std::size_t ContextText::skipToName( std::span<std::string_view const> names ) {
    std::vector<String> quoted;
    std::size_t longest = 0;
    for( std::string_view const name : names ) {
        quoted.push_back( '"' + String( name ) + '"' );
        longest = std::max( longest, quoted.back().size() );
    }
    for( std::size_t from = begin_;; ) {
        Match const match = firstOf( quoted, from );
        if( match.name == names.size() ) {
            if( !fill( std::min( longest + 1, end_ - from ) ) )
                return names.size();
            from = 0;
            continue;
        }
        bool const escaped = match.at > 0 && buffer_[ match.at - 1 ] == '\\';
        begin_ = match.at + quoted[ match.name ].size();
        if( !escaped && takeColon() )
            return match.name;
        from = begin_;
    }
}

} // namespace Bfri
