#pragma once

#include "vessa/Export.h"
#include "vessa/Types.h"

#include <atomic>
#include <functional>
#include <locale>
#include <ostream>
#include <sstream>
#include <string_view>

namespace Zel {

using Vessa::String;
using Vessa::U16;
using Vessa::U32;

/// One line of trace.
struct TraceLine {
    String source; ///< the handle's name
    U32 level = 0; ///< 0 to 9
    U32 line = 0;  ///< in the source
    String function;
    String text;
};

/// A named source of trace lines with ten levels, each on or off. Level 0 is on from the start; the
/// environment variable ZEL_TRACE turns others on: "BfResourceParser/5-7", several as "A/5,B/1-3".
/// Thread-safe.
class VESSA_EXPORT TraceHandle {
  public:
    static constexpr U32 levels = 10;

    /// The handle of a name: made on first use, one in the process, never destroyed. Takes a lock; keep the
    /// reference.
    static TraceHandle& byName( String const& name );

    explicit TraceHandle( String name );
    TraceHandle( TraceHandle const& ) = delete;
    TraceHandle& operator=( TraceHandle const& ) = delete;

    String const& name() const { return name_; }
    /// Whether a level is on; levels from 10 are off. One atomic load.
    bool levelOn( U32 level ) const {
        return level < levels && ( on_.load( std::memory_order_relaxed ) >> level & 1 );
    }
    /// Turns a level below 10 on or off; others change nothing.
    void levelIs( U32 level, bool on );

  private:
    String name_;
    std::atomic<U16> on_ = 1;
};

using TraceSink = std::function<void( TraceLine const& )>;

/// Installs where lines go (empty: standard error, a line "SOURCE/LEVEL LINE FUNCTION: TEXT" each) and
/// returns the former sink. Thread-safe; the sink is called under a lock and must neither trace nor throw.
VESSA_EXPORT TraceSink traceSinkIs( TraceSink sink );

/// Hands a line to the sink.
VESSA_EXPORT void traceEmit( TraceLine const& line );

/// Collects one line's text and emits it at the end of the statement. Made by the macros below.
class TraceStatement {
  public:
    TraceStatement( TraceHandle const& handle, U32 level, U32 line, char const* function )
        : handle_( handle ), level_( level ), line_( line ), function_( function ) {
        text_.imbue( std::locale::classic() ); // numbers are matched: no grouping, whatever the process likes
    }
    ~TraceStatement() { traceEmit( { handle_.name(), level_, line_, function_, text_.str() } ); }

    std::ostream& text() { return text_; }

  private:
    TraceHandle const& handle_;
    U32 level_;
    U32 line_;
    char const* function_;
    std::ostringstream text_;
};

/// Makes a streamed text void, so that the macros below are expressions: `&` binds weaker than `<<`.
struct TraceEnd {
    void operator&( std::ostream& ) const {}
};

} // namespace Zel

/// `ZEL_TRACE( handle, 7 ) << "Parsed table " << name;`: the text is built only when the level is on.
#define ZEL_TRACE( handle, level ) ZEL_TRACE_AT( handle, level, __LINE__, __func__ )

/// The same with a given line number and function name.
#define ZEL_TRACE_AT( handle, level, line, function )                                                        \
    !( handle ).levelOn( level )                                                                             \
        ? static_cast<void>( 0 )                                                                             \
        : ::Zel::TraceEnd() & ::Zel::TraceStatement( handle, level, line, function ).text()
