#include "inspect/load/Fault.h"

#include "inspect/load/ConfPath.h"
#include "inspect/rows/Row.h"

#include <limits>

namespace Bfri {

namespace {

/// The number, if it fits into the inspector's type.
std::optional<U32> fitting( std::optional<Vessa::U64> number ) {
    return number && *number <= std::numeric_limits<U32>::max() ? std::optional( static_cast<U32>( *number ) )
                                                                : std::nullopt;
}

/// Why the file cannot be used.
void addProblem( Zel::InputPlace const& place, Fault& fault ) {
    using Problem = Zel::InputPlace::Problem;
    fault.problem = place.reason;
    if( place.problem == Problem::open )
        fault.problem = "can't open it: " + place.reason;
    if( place.problem == Problem::read )
        fault.problem =
            ( isGzip( place.file ) ? "can't read it as gzip: " : "can't read it: " ) + place.reason;
    fault.line = fitting( place.line );
    fault.column = fitting( place.column );
    fault.expected = "a file, plain or gzip, that holds JSON";
}

/// The value that is not as expected.
void addPlace( Zel::InputPlace const& place, Fault& fault ) {
    if( fault.inContextFile )
        fault.pointer = place.pointer.value_or( "" );
    fault.member = place.member;
    fault.handle = place.handle;
    if( place.element ) {
        fault.tableIndex = place.element->index;
        fault.table = place.element->name.value_or( "" );
    }
}

} // namespace

Fault faultOf( Ostler::Status const& status ) {
    Fault fault;
    fault.file = status.file;
    if( status.line ) {
        fault.line = status.line;
        fault.column = status.column;
    }
    fault.expected = status.expected;
    fault.found = status.found;
    if( status.expected.empty() )
        fault.problem = status.reason;
    return fault;
}

Fault faultOf( Zel::AssertionFailure const& failure, std::vector<Zel::TraceLine> const& traced ) {
    Fault fault;
    fault.condition = failure.condition;
    fault.function = failure.function;
    fault.file = failure.place.file;
    fault.inContextFile = failure.place.kind == "context file";
    if( failure.place.problem != Zel::InputPlace::Problem::none ) {
        addProblem( failure.place, fault );
        return fault;
    }
    addPlace( failure.place, fault );
    Expectation const expected = expectationOf( failure );
    fault.expected = expected.text;
    fault.culprit = expected.culprit;
    if( !failure.message.empty() )
        fault.reported.push_back( failure.message );
    for( Zel::TraceLine const& line : traced ) {
        if( expected.traceAddsToIt && !line.text.empty() )
            fault.reported.push_back( line.text );
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
