#include "zel/Trace.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace Zel {

namespace {

std::mutex& sinkMutex() {
    static auto& mutex = *new std::mutex; // never destroyed: lines may come from the end of the process
    return mutex;
}

TraceSink& currentSink() {
    static auto& sink = *new TraceSink;
    return sink;
}

struct Selection {
    std::string_view name;
    U32 first;
    U32 last;
};

std::optional<U32> levelOf( std::string_view text ) {
    if( text.size() != 1 || text[ 0 ] < '0' || text[ 0 ] > '9' )
        return std::nullopt;
    return static_cast<U32>( text[ 0 ] - '0' );
}

/// Reads "NAME/5-7" or "NAME/5".
std::optional<Selection> selectionOf( std::string_view text ) {
    auto const slash = text.rfind( '/' );
    if( slash == std::string_view::npos || slash == 0 )
        return std::nullopt;
    std::string_view const range = text.substr( slash + 1 );
    auto const dash = range.find( '-' );
    auto const first = levelOf( range.substr( 0, dash ) );
    auto const last = dash == std::string_view::npos ? first : levelOf( range.substr( dash + 1 ) );
    if( !first || !last || *first > *last )
        return std::nullopt;
    return Selection{ text.substr( 0, slash ), *first, *last };
}

/// Turns on what the environment selects for a handle.
void applyEnvironment( TraceHandle& handle ) {
    char const* const variable = std::getenv( "ZEL_TRACE" );
    std::string_view rest = variable ? variable : "";
    while( !rest.empty() ) {
        std::string_view const item = rest.substr( 0, rest.find( ',' ) );
        rest.remove_prefix( std::min( item.size() + 1, rest.size() ) );
        auto const selection = selectionOf( item );
        if( !selection ) {
            std::fprintf(
                stderr,
                "ZEL_TRACE: expected NAME/LEVEL or NAME/FIRST-LAST with levels 0 to 9, got \"%.*s\"\n",
                static_cast<int>( item.size() ), item.data() );
            continue;
        }
        if( selection->name != handle.name() )
            continue;
        for( U32 level = selection->first; level <= selection->last; ++level )
            handle.levelIs( level, true );
    }
}

} // namespace

TraceHandle& TraceHandle::byName( String const& name ) {
    static auto& mutex = *new std::mutex;
    static auto& handles = *new std::map<String, TraceHandle>;
    std::lock_guard const lock( mutex );
    return handles.try_emplace( name, name ).first->second;
}

TraceHandle::TraceHandle( String name ) : name_( std::move( name ) ) { applyEnvironment( *this ); }

void TraceHandle::levelIs( U32 level, bool on ) {
    if( level >= levels )
        return;
    auto const bit = static_cast<U16>( 1U << level );
    if( on )
        on_.fetch_or( bit, std::memory_order_relaxed );
    else
        on_.fetch_and( static_cast<U16>( ~bit ), std::memory_order_relaxed );
}

TraceSink traceSinkIs( TraceSink sink ) {
    std::lock_guard const lock( sinkMutex() );
    return std::exchange( currentSink(), std::move( sink ) );
}

void traceEmit( TraceLine const& line ) {
    std::lock_guard const lock( sinkMutex() );
    if( currentSink() ) {
        currentSink()( line );
        return;
    }
    std::fprintf( stderr, "%s/%u %u %s: %s\n", line.source.c_str(), line.level, line.line,
                  line.function.c_str(), line.text.c_str() );
}

} // namespace Zel
