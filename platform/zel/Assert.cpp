#include "zel/Assert.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace Zel {

namespace {

std::atomic<AssertionHandler> currentHandler = nullptr;

thread_local InputScope const* innermost = nullptr;
thread_local char const* currentOperation = nullptr; // its signature

String firstLine( AssertionFailure const& failure ) {
    return failure.source + ":" + std::to_string( failure.line ) + ": " + failure.function +
           ": assertion failed: " + failure.condition;
}

void locateFrom( InputScope const* scope, InputPlace& place ) {
    if( !scope )
        return;
    locateFrom( scope->outer(), place );
    scope->locate( place );
}

InputPlace currentPlace() {
    InputPlace place;
    locateFrom( innermost, place );
    return place;
}

/// Input may hold anything: a text that is written to a terminal or a log must stay one line and do nothing.
/// Of ASCII; what bytes beyond it mean is the terminal's.
String withoutControls( String const& text ) {
    String safe;
    for( char const c : text ) {
        if( static_cast<unsigned char>( c ) >= ' ' && c != '\x7f' ) {
            safe += c;
            continue;
        }
        char escaped[ 5 ];
        std::snprintf( escaped, sizeof escaped, "\\x%02x", static_cast<unsigned>( c ) );
        safe += escaped;
    }
    return safe;
}

/// Adds a part to a list of parts.
void add( String& list, char const* separator, String const& part ) {
    list += list.empty() ? part : separator + part;
}

/// Why the file cannot be used.
String problemText( InputPlace const& place ) {
    if( place.problem == InputPlace::Problem::open )
        return "can't open it: " + place.reason;
    if( place.problem == InputPlace::Problem::read )
        return "can't read it: " + place.reason;
    if( !place.line || !place.column )
        return place.reason;
    return "line " + std::to_string( *place.line ) + ", column " + std::to_string( *place.column ) + ": " +
           place.reason;
}

String elementText( InputPlace::Element const& element ) {
    String const number = element.kind + " " + std::to_string( element.index );
    return element.name ? number + " \"" + *element.name + '"' : number;
}

} // namespace

String toText( InputPlace const& place ) {
    String text = place.kind.empty() ? place.file : place.kind + ' ' + place.file;
    if( place.problem != InputPlace::Problem::none )
        add( text, ": ", problemText( place ) );
    if( place.pointer && !place.pointer->empty() )
        add( text, " ", "at " + *place.pointer );
    if( !place.member.empty() )
        add( text, ", ", "member \"" + place.member + '"' );
    if( place.element )
        add( text, ", ", elementText( *place.element ) );
    return withoutControls( text );
}

String toText( AssertionFailure const& failure ) {
    String text = firstLine( failure ) + "\n";
    if( !failure.message.empty() )
        text += failure.message + "\n";
    if( !failure.position.empty() )
        text += "in " + failure.position + "\n";
    return text;
}

AssertionError::AssertionError( AssertionFailure failure )
    : failure_( std::move( failure ) ),
      what_( firstLine( failure_ ) + ( failure_.position.empty() ? "" : ", in " + failure_.position ) ) {}

AssertionError::~AssertionError() = default;

AssertionHandler assertionHandlerIs( AssertionHandler handler ) { return currentHandler.exchange( handler ); }

void throwAssertionError( AssertionFailure const& failure ) { throw AssertionError( failure ); }

InputScope::InputScope() : outer_( std::exchange( innermost, this ) ) {}

InputScope::~InputScope() { innermost = outer_; }

InputScope const* InputScope::current() { return innermost; }

Operation::Operation( char const* signature ) : outer_( std::exchange( currentOperation, signature ) ) {}

Operation::~Operation() { currentOperation = outer_; }

void AssertionSite::fail( String const& message ) const {
    InputPlace const place = currentPlace();
    char const* const signature = currentOperation ? currentOperation : function;
    AssertionFailure const failure{ source,          line,  signature, condition, message,
                                    toText( place ), place, expected };
    if( AssertionHandler const handler = currentHandler.load() )
        handler( failure );
    String const text = toText( failure );
    std::fwrite( text.data(), 1, text.size(), stderr );
    std::abort();
}

} // namespace Zel
