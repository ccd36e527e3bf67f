#include "cli/grammar/Pattern.h"

#include "cli/grammar/Failure.h"
#include "cli/terminal/Characters.h"

#include <cstdint>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace Bfri {

namespace {

// Where Perl and ECMAScript differ, ECMAScript's syntax applies.
constexpr std::uint32_t syntax = PCRE2_ALLOW_EMPTY_CLASS | PCRE2_ALT_BSUX | PCRE2_DOLLAR_ENDONLY |
                                 PCRE2_MATCH_UNSET_BACKREF | PCRE2_UTF | PCRE2_MATCH_INVALID_UTF;

constexpr std::uint32_t mostSteps = 1'000'000;
constexpr std::uint32_t mostKibibytes = 64 * 1024;

PCRE2_SPTR units( std::string_view text ) { return reinterpret_cast<PCRE2_SPTR>( text.data() ); }

[[noreturn]] void fail( char const* option, String const& expression, String const& where, int error ) {
    PCRE2_UCHAR reason[ 256 ] = {};
    pcre2_get_error_message( error, reason, sizeof reason );
    throw Failure( ExitStatus::usage, "can't use " + String( option ) + " '" +
                                          escapeForTerminal( expression ) + "'" + where + ": " +
                                          reinterpret_cast<char const*>( reason ) );
}

template<class T>
using Owned = std::unique_ptr<T, void ( * )( T* )>;

} // namespace

Pattern::Pattern( String expression, char const* option )
    : expression_( std::move( expression ) ), option_( option ) {
    int error = 0;
    PCRE2_SIZE offset = 0;
    code_.reset( pcre2_compile( units( expression_ ), expression_.size(), syntax, &error, &offset, nullptr ),
                 pcre2_code_free );
    if( !code_ )
        fail( option_, expression_, " at offset " + std::to_string( offset ), error );
}

bool Pattern::isIn( std::string_view text ) const {
    Owned<pcre2_match_data> const match( pcre2_match_data_create( 1, nullptr ), pcre2_match_data_free );
    Owned<pcre2_match_context> const limits( pcre2_match_context_create( nullptr ),
                                             pcre2_match_context_free );
    pcre2_set_match_limit( limits.get(), mostSteps );
    pcre2_set_heap_limit( limits.get(), mostKibibytes );
    int const result =
        pcre2_match( code_.get(), units( text ), text.size(), 0, 0, match.get(), limits.get() );
    if( result < 0 && result != PCRE2_ERROR_NOMATCH )
        fail( option_, expression_, " on a name of " + std::to_string( text.size() ) + " bytes", result );
    return result >= 0;
}

} // namespace Bfri
