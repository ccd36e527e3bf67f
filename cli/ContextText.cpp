#include "cli/ContextText.h"

#include <algorithm>
#include <array>
#include <experimental/simd>
#include <filesystem>

#include <zlib.h>

namespace Bfri {

namespace {

namespace simd = std::experimental;

constexpr std::size_t chunk = std::size_t( 1 ) << 16;
constexpr unsigned char quote = '"';

/// Null for what is no regular file: a pipe would wait for its writer.
gzFile opened( String const& path ) {
    std::error_code error;
    return std::filesystem::is_regular_file( path, error ) ? gzopen( path.c_str(), "rb" ) : nullptr;
}

int closed( gzFile file ) { return file ? gzclose( file ) : Z_OK; }

using Characters = simd::native_simd<unsigned char>;
using Firsts = std::array<Characters, ContextText::mostNames>;

/// The first quote with one of the characters behind it, or the end; near the end any quote. Looks at as many
/// places at once as the processor compares.
char const* nextQuote( char const* at, char const* end, Firsts const& firsts ) {
    constexpr auto step = static_cast<std::ptrdiff_t>( Characters::size() );
    for( ; end - at > step; at += step ) {
        auto const* const bytes = reinterpret_cast<unsigned char const*>( at );
        Characters const behind( bytes + 1, simd::element_aligned );
        Characters::mask_type found( false );
        for( Characters const& first : firsts )
            found = found || behind == first;
        found = found && Characters( bytes, simd::element_aligned ) == quote;
        if( any_of( found ) )
            return at + find_first_set( found );
    }
    return std::find( at, end, '"' );
}

/// Whether the name and a quote are the front of a text.
bool startsQuoted( std::string_view text, std::string_view name ) {
    return text.starts_with( name.front() ) && text.starts_with( name ) &&
           text.substr( name.size() ).starts_with( '"' );
}

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

ContextText::Match ContextText::firstOf( std::span<std::string_view const> names, std::size_t from ) const {
    Firsts firsts;
    for( std::size_t i = 0; i < firsts.size(); ++i )
        firsts[ i ] = static_cast<unsigned char>( names[ i % names.size() ].front() );
    char const* const end = buffer_.data() + end_;
    for( char const* at = buffer_.data() + from; ( at = nextQuote( at, end, firsts ) ) != end; ++at ) {
        auto const found = std::find_if( names.begin(), names.end(), [ & ]( std::string_view name ) {
            return startsQuoted( { at + 1, end }, name );
        } );
        if( found != names.end() )
            return { static_cast<std::size_t>( found - names.begin() ),
                     static_cast<std::size_t>( at - buffer_.data() ) };
    }
    return { names.size(), end_ };
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
std::size_t ContextText::skipToAny( std::span<std::string_view const> names ) {
    std::size_t longest = 0; // with its quotes
    for( std::string_view const name : names )
        longest = std::max( longest, name.size() + 2 );
    for( std::size_t from = begin_;; ) {
        Match const match = firstOf( names, from );
        if( match.name == names.size() ) {
            if( !fill( std::min( longest + 1, end_ - from ) ) )
                return names.size();
            from = 0;
            continue;
        }
        bool const escaped = match.at > 0 && buffer_[ match.at - 1 ] == '\\';
        begin_ = match.at + names[ match.name ].size() + 2;
        if( !escaped && takeColon() )
            return match.name;
        from = begin_;
    }
}

} // namespace Bfri
