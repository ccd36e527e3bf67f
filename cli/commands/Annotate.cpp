#include "cli/commands/Annotator.h"
#include "cli/commands/Answers.h"
#include "cli/terminal/Characters.h"
#include "inspect/model/HandleUses.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <limits>
#include <poll.h>
#include <unistd.h>

namespace Bfri {

namespace {

constexpr U8 notOfAWord = 0xFF;
constexpr U8 noDigit = 0xFE;

/// For every character: its value as a digit, else its class.
constexpr auto meanings = [] {
    std::array<U8, 256> all{};
    all.fill( notOfAWord );
    for( char c = '0'; c <= '9'; ++c )
        all[ static_cast<U8>( c ) ] = static_cast<U8>( c - '0' );
    for( char c = 'a'; c <= 'z'; ++c ) {
        U8 const meaning = c <= 'f' ? static_cast<U8>( c - 'a' + 10 ) : noDigit;
        all[ static_cast<U8>( c ) ] = all[ static_cast<U8>( c - 'a' + 'A' ) ] = meaning;
    }
    all[ '_' ] = noDigit;
    return all;
}();

U8 meaning( char c ) { return meanings[ static_cast<U8>( c ) ]; }

bool isOfAWord( char c ) { return meaning( c ) != notOfAWord; }

} // namespace

void Annotator::take( std::string_view part, String& out ) {
    char const* const end = part.data() + part.size();
    char const* copied = part.data();
    for( char const* at = copied; at != end; ) {
        if( state_ == State::inNumber && isOfAWord( *at ) ) {
            add( *at++ );
        } else if( state_ == State::inNumber ) {
            out.append( copied, at );
            copied = at;
            if( *at == '.' && base_ == 10 && note() ) {
                copied = ++at; // the dot waits for what follows it
                state_ = State::behindDot;
            } else {
                settle( false, out );
                state_ = State::between;
            }
        } else if( state_ == State::behindDot ) {
            settle( meaning( *at ) < 10, out );
            state_ = State::between;
        } else if( state_ == State::inOtherWord ) {
            at = std::find_if_not( at, end, isOfAWord );
            state_ = at == end ? state_ : State::between;
        } else if( at = std::find_if( at, end, isOfAWord ); at != end ) {
            begin( *at, at == part.data() ? last_ : at[ -1 ] );
            ++at;
        }
    }
    out.append( copied, end );
    last_ = part.empty() ? last_ : part.back();
}

void Annotator::end( String& out ) {
    settle( false, out );
    state_ = State::between;
}

void Annotator::begin( char first, char before ) {
    value_ = meaning( first );
    bool const number = value_ == 0 || ( value_ < 10 && before != '.' );
    state_ = number ? State::inNumber : State::inOtherWord;
    base_ = value_ == 0 ? 0 : 10;
    digits_ = value_ != 0;
}

void Annotator::add( char c ) {
    if( base_ == 0 && ( c == 'x' || c == 'X' ) ) {
        base_ = 16;
        return;
    }
    U8 const digit = meaning( c );
    value_ = value_ * base_ + digit;
    digits_ = true;
    if( digit >= base_ || value_ > std::numeric_limits<U32>::max() )
        state_ = State::inOtherWord;
}

String const* Annotator::note() const {
    constexpr std::uint64_t leastDecimal = 0x10000;
    if( !digits_ || ( base_ == 10 && value_ < leastDecimal ) )
        return nullptr;
    auto const note = notes_.find( static_cast<U32>( value_ ) );
    return note == notes_.end() ? nullptr : &note->second;
}

void Annotator::settle( bool isFraction, String& out ) const {
    bool const ends = state_ == State::inNumber || state_ == State::behindDot;
    if( String const* const text = ends && !isFraction ? note() : nullptr )
        out += *text;
    if( state_ == State::behindDot )
        out += '.';
}

namespace {

using Names = std::vector<String>;

constexpr std::size_t mostNames = 3; ///< in a note
constexpr std::size_t readAtOnce = 1U << 18;

/// Many tables have an action of the same name.
String nameOf( HandleUse const& bearer ) {
    bool const isAction = bearer.kind == Kind::actions && !bearer.table.empty();
    return String( bearer.owner ) + ( isAction ? " of " + String( bearer.table ) : "" );
}

/// The names of what each handle belongs to, each once.
std::unordered_map<U32, Names> ownersOf( Configuration const& configuration ) {
    std::unordered_map<U32, Names> owners;
    eachHandleUse( configuration.parser(), [ & ]( HandleUse const& bearer ) {
        if( bearer.owner.empty() )
            return;
        Names& names = owners[ bearer.handle ];
        if( names.size() > mostNames )
            return;
        String name = nameOf( bearer );
        if( std::find( names.begin(), names.end(), name ) == names.end() )
            names.push_back( std::move( name ) );
    } );
    return owners;
}

/// Like the symbol that disassemblers write after an address.
String noteOf( Names const& names ) {
    String note;
    for( std::size_t i = 0; i < names.size(); ++i )
        note += ( i == 0 ? " <" : "|" ) + ( i < mostNames ? escapeForTerminal( names[ i ] ) : "..." );
    return note + '>';
}

Notes notesOf( Configuration const& configuration ) {
    Notes notes;
    for( auto const& [ handle, names ] : ownersOf( configuration ) )
        notes.emplace( handle, noteOf( names ) );
    return notes;
}

/// Reads what is there, so that the lines of a slow log are not held back; 0 at the end.
std::size_t readSome( int in, std::span<char> room ) {
    for( ;; ) {
        ssize_t const got = read( in, room.data(), room.size() );
        if( got >= 0 )
            return static_cast<std::size_t>( got );
        if( errno == EAGAIN ) {
            pollfd waiting = { in, POLLIN, 0 };
            poll( &waiting, 1, -1 );
        } else if( errno != EINTR ) {
            throw Failure( ExitStatus::notLoadable,
                           String( "can't read standard input: " ) + std::strerror( errno ) );
        }
    }
}

} // namespace

ExitStatus annotate( Configuration const& configuration, Request const&, Streams const& io ) {
    Annotator annotator( notesOf( configuration ) );
    std::vector<char> room( readAtOnce );
    String copy;
    while( io.out ) {
        std::size_t const got = readSome( io.in, room );
        got > 0 ? annotator.take( { room.data(), got }, copy ) : annotator.end( copy );
        io.out.write( copy.data(), static_cast<std::streamsize>( copy.size() ) ).flush();
        if( got == 0 )
            break;
        copy.clear();
    }
    return ExitStatus::done;
}

} // namespace Bfri
