#include "zel/Assert.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace Zel {

namespace {

std::atomic<AssertionHandler> currentHandler = nullptr;

thread_local InputScope const* innermost = nullptr;

String firstLine( AssertionFailure const& failure ) {
    return failure.source + ":" + std::to_string( failure.line ) + ": " + failure.function +
           ": assertion failed: " + failure.condition;
}

void describeFrom( std::ostream& os, InputScope const* scope ) {
    if( scope->outer() ) {
        describeFrom( os, scope->outer() );
        os << ", ";
    }
    scope->describe( os );
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

String currentPosition() {
    std::ostringstream position;
    position.imbue( std::locale::classic() );
    if( innermost )
        describeFrom( position, innermost );
    return withoutControls( position.str() );
}

} // namespace

String toText( AssertionFailure const& failure ) {
    String text = firstLine( failure ) + "\n";
    if( !failure.message.empty() )
        text += failure.message + "\n";
    if( !failure.position.empty() )
        text += "in " + failure.position + "\n";
    return text;
}

AssertionError::AssertionError( AssertionFailure failure )
    : failure_( std::move( failure ) ), what_( firstLine( failure_ ) ) {}

AssertionError::~AssertionError() = default;

AssertionHandler assertionHandlerIs( AssertionHandler handler ) { return currentHandler.exchange( handler ); }

void throwAssertionError( AssertionFailure const& failure ) { throw AssertionError( failure ); }

InputScope::InputScope() : outer_( std::exchange( innermost, this ) ) {}

InputScope::~InputScope() { innermost = outer_; }

InputScope const* InputScope::current() { return innermost; }

void AssertionSite::fail( String const& message ) const {
    AssertionFailure const failure{ source, line, function, condition, message, currentPosition() };
    if( AssertionHandler const handler = currentHandler.load() )
        handler( failure );
    String const text = toText( failure );
    std::fwrite( text.data(), 1, text.size(), stderr );
    std::abort();
}

} // namespace Zel
