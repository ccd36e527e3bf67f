#include "cli/terminal/FaultText.h"

#include "cli/terminal/Characters.h"

#include <fmt/format.h>

namespace Bfri {

namespace {

/// A line, unless there is nothing to say.
String line( char const* label, String const& text ) {
    return text.empty() ? "" : fmt::format( "  {:<11}{}\n", label, escapeForTerminal( text ) );
}

/// The lines that both texts end with.
String knownLines( Fault const& fault ) {
    String lines = line( "expected:", fault.expected ) + line( "handle:", handleOf( fault ) ) +
                   line( "found:", fault.found ) + line( "hint:", fault.hint );
    for( String const& text : fault.reported )
        lines += line( "reported:", text );
    return lines + line( "condition:", conditionOf( fault ) );
}

/// The index and the name: `0 "acl"`.
String tableOf( Fault const& fault ) {
    return fault.table.empty() ? fmt::format( "{}", *fault.tableIndex )
                               : fmt::format( "{} \"{}\"", *fault.tableIndex, fault.table );
}

/// Without what has a line of its own.
String placeInLines( Fault const& fault ) {
    if( fault.column && fault.problem.empty() )
        return fmt::format( "line {}, column {}", *fault.line, *fault.column );
    String place;
    if( fault.pointer )
        place = fault.pointer->empty() ? "the top of the file" : *fault.pointer;
    if( fault.pointer && !fault.member.empty() )
        place += fmt::format( ", member \"{}\"", fault.member );
    if( fault.line && !fault.column )
        place += fmt::format( ", line {}", *fault.line );
    return place;
}

} // namespace

String placeText( Fault const& fault ) {
    String place = fault.pointer.value_or( "" ).empty() ? "" : "at " + *fault.pointer;
    if( fault.line && fault.problem.empty() )
        place = fmt::format( "line {}, column {}", *fault.line, *fault.column );
    auto const add = [ & ]( String const& part ) { place += ( place.empty() ? "" : ", " ) + part; };
    if( !fault.member.empty() )
        add( fmt::format( "member \"{}\"", fault.member ) );
    if( fault.tableIndex )
        add( "table " + tableOf( fault ) );
    return place;
}

String faultText( Fault const& fault ) {
    String text = fmt::format( "can't use {}\n", escapeForTerminal( subjectOf( fault ) ) ) +
                  line( "where:", placeText( fault ) ) + line( "problem:", problemOf( fault ) ) +
                  knownLines( fault );
    text.pop_back();
    return text;
}

String faultLines( Fault const& fault ) {
    String lines = line( "file:", fault.file ) + line( "problem:", problemOf( fault ) ) +
                   line( "where:", placeInLines( fault ) );
    if( fault.column ) {
        String const front = escapeForTerminal( fault.excerpt.substr( 0, fault.caret ) );
        lines += line( "", fault.excerpt.empty() ? " " : fault.excerpt );
        lines += String( 13 + width( front ), ' ' ) + "^\n";
    }
    return lines + ( fault.tableIndex ? line( "table:", tableOf( fault ) ) : "" ) + knownLines( fault );
}

} // namespace Bfri
