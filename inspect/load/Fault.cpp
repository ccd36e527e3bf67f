#include "inspect/load/Fault.h"

#include "inspect/load/AssertionWordings.h"
#include "inspect/load/ConfPath.h"
#include "inspect/rows/Row.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>

namespace Bfri {

namespace {

/// Takes a text off the front of another, if it is there.
bool take( std::string_view& from, std::string_view text ) {
    bool const there = from.starts_with( text );
    if( there )
        from.remove_prefix( text.size() );
    return there;
}

std::optional<U32> takeNumber( std::string_view& from ) {
    U32 number = 0;
    auto const [ end, error ] = std::from_chars( from.data(), from.data() + from.size(), number );
    if( error != std::errc() )
        return std::nullopt;
    from.remove_prefix( static_cast<std::size_t>( end - from.data() ) );
    return number;
}

/// Everything up to a text, or all; the text goes, too.
std::string_view takeTo( std::string_view& from, std::string_view text ) {
    auto const end = from.find( text );
    std::string_view const taken = from.substr( 0, end );
    from.remove_prefix( end == std::string_view::npos ? from.size() : end + text.size() );
    return taken;
}

/// "line L, column C: PROBLEM", or "PROBLEM".
void readProblem( std::string_view text, Fault& fault ) {
    fault.problem = text;
    if( !take( text, "line " ) )
        return;
    fault.line = takeNumber( text );
    if( take( text, ", column " ) )
        fault.column = takeNumber( text );
    if( take( text, ": " ) )
        fault.problem = text;
}

/// " at POINTER, member "M", table I "T"", where each part may be missing.
void readPlace( std::string_view text, Fault& fault ) {
    fault.pointer = "";
    if( take( text, " at " ) )
        fault.pointer = text.substr( 0, text.find( ',' ) );
    text.remove_prefix( fault.pointer->size() );
    if( take( text, ", member \"" ) )
        fault.member = takeTo( text, "\"" );
    if( take( text, ", table " ) )
        fault.tableIndex = takeNumber( text );
    if( take( text, " \"" ) )
        fault.table = text.substr( 0, text.rfind( '"' ) );
}

/// A position has control characters of a path as "\x0a".
String withoutControls( String const& path ) {
    String text;
    for( char const c : path )
        text += static_cast<unsigned char>( c ) < ' ' || c == '\x7F'
                    ? fmt::format( "\\x{:02x}", static_cast<unsigned char>( c ) )
                    : String( 1, c );
    return text;
}

struct ContextFile {
    String path;
    std::size_t length; ///< of its part of the position
};

/// The longest of the profile's context files that a position begins with; none when there is none.
std::optional<ContextFile> contextFileOf( String const& position, Ostler::DeviceProfile const& profile ) {
    std::optional<ContextFile> longest;
    for( Ostler::Device const& device : profile.devices ) {
        for( Ostler::Pipeline const& pipeline : device.pipelines ) {
            String const start = "context file " + withoutControls( pipeline.contextFile );
            if( position.starts_with( start ) && ( !longest || start.size() > longest->length ) )
                longest = { pipeline.contextFile, start.size() };
        }
    }
    return longest;
}

/// The handle that a trace line says is missing.
std::optional<U32> missingHandle( std::string_view line ) {
    for( std::string_view const front :
         { "handle ", "Can't find action tbl hdl ", "Can't find sel tbl hdl " } ) {
        if( take( line, front ) )
            return takeNumber( line );
    }
    return std::nullopt;
}

} // namespace

Fault faultOf( Ostler::Status const& status ) {
    Fault fault;
    fault.file = status.file;
    if( status.line ) {
        fault.line = status.line;
        fault.column = status.column;
    }
    std::string_view reason = status.reason;
    if( take( reason, "expected " ) ) {
        fault.expected = takeTo( reason, ", found " );
        fault.found = reason;
    } else
        fault.problem = reason;
    return fault;
}

Fault faultOf( Zel::AssertionFailure const& failure, std::vector<Zel::TraceLine> const& traced,
               String const& conf, Ostler::DeviceProfile const& profile ) {
    Fault fault;
    fault.condition = failure.condition;
    fault.function = failure.function;
    auto const contextFile = contextFileOf( failure.position, profile );
    fault.inContextFile = contextFile.has_value();
    fault.file = contextFile ? contextFile->path : conf;
    std::string_view place = failure.position;
    place.remove_prefix( contextFile ? contextFile->length : place.size() );
    if( take( place, ": " ) ) {
        readProblem( place, fault );
        if( String const front = "can't read it"; fault.problem.starts_with( front ) && isGzip( fault.file ) )
            fault.problem.insert( front.size(), " as gzip" );
        fault.expected = "a file, plain or gzip, that holds JSON";
        return fault;
    }
    if( contextFile )
        readPlace( place, fault );
    Expectation const expected = expectationOf( failure );
    fault.expected = expected.text;
    fault.culprit = expected.culprit;
    if( !failure.message.empty() )
        fault.reported.push_back( failure.message );
    for( Zel::TraceLine const& line : traced ) {
        if( !expected.traceAddsToIt || line.text.empty() )
            continue;
        fault.reported.push_back( line.text );
        fault.handle = missingHandle( line.text );
    }
    return fault;
}

String handleOf( Fault const& fault ) {
    return fault.handle ? std::to_string( *fault.handle ) + " (" + hexText( *fault.handle ) + ")" : "";
}

String problemOf( Fault const& fault ) {
    if( fault.problem.empty() || !fault.line || !fault.column )
        return fault.problem;
    return "line " + std::to_string( *fault.line ) + ", column " + std::to_string( *fault.column ) + ": " +
           fault.problem;
}

String conditionOf( Fault const& fault ) {
    bool const says = !fault.condition.empty() && fault.condition != "false";
    return says ? fault.condition + ", in " + fault.function : "";
}

String subjectOf( Fault const& fault ) {
    return ( fault.inContextFile ? "context file " : "switch configuration " ) +
           ( fault.file.empty() ? "with an empty path" : fault.file );
}

String sentenceOf( Fault const& fault ) {
    return "can't use " + subjectOf( fault ) + ": " +
           ( fault.problem.empty() ? "expected " + fault.expected : problemOf( fault ) );
}

} // namespace Bfri
