#include "cli/commands/Annotator.h"
#include "cli/commands/Answers.h"
#include "cli/terminal/Characters.h"
#include "inspect/model/HandleUses.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <unistd.h>

namespace Bfri {

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
