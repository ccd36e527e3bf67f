#include "cli/terminal/TerminalStyle.h"

#include <cstdlib>
#include <fmt/format.h>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Bfri {

namespace {

std::string_view environment( char const* name ) {
    char const* const value = std::getenv( name );
    return value ? value : "";
}

std::size_t terminalColumns() {
    winsize size = {};
    if( ioctl( STDOUT_FILENO, TIOCGWINSZ, &size ) != 0 || size.ws_col == 0 )
        return 80;
    return size.ws_col;
}

/// The first of the variables that is set says it, as for every program of the system.
bool localeIsUtf8() {
    for( char const* const name : { "LC_ALL", "LC_CTYPE", "LANG" } ) {
        std::string_view const locale = environment( name );
        if( !locale.empty() )
            return locale.find( "UTF-8" ) != locale.npos || locale.find( "utf8" ) != locale.npos;
    }
    return false;
}

bool hasManyColors() {
    std::string_view const term = environment( "TERM" );
    std::string_view const colors = environment( "COLORTERM" );
    return term.find( "256color" ) != term.npos || term.find( "-direct" ) != term.npos ||
           colors == "truecolor" || colors == "24bit";
}

} // namespace

TerminalStyle lookOfStandardOutput() {
    bool const terminal = isatty( STDOUT_FILENO ) == 1;
    bool const color = terminal && environment( "NO_COLOR" ).empty() && environment( "TERM" ) != "dumb";
    return { terminal ? terminalColumns() : 0, color, localeIsUtf8(), hasManyColors() };
}

String painted( TerminalStyle const& look, Paint paint, String const& text ) {
    return look.color ? fmt::format( "\033[{}m{}\033[0m", static_cast<int>( paint ), text ) : text;
}

String onHeat( TerminalStyle const& look, unsigned heat, String const& text ) {
    static constexpr unsigned char backgrounds[ hottest ] = { 230, 229, 222, 215, 208, 202 };
    if( !look.color || !look.manyColors || heat == 0 )
        return text;
    return fmt::format( "\033[38;5;16;48;5;{}m{}\033[0m", backgrounds[ heat - 1 ], text );
}

} // namespace Bfri
