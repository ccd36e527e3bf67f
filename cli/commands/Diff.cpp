#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
#include "cli/terminal/DiffText.h"
#include "inspect/model/RecordKinds.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

namespace {

void printJson( std::ostream& out, Request const& request, Comparison const& comparison ) {
    JsonAnswer answer( out );
    answer.member( "old", request.words[ 0 ] );
    answer.member( "new", request.words[ 1 ] );
    answer.members( rowOf( comparison ) );
}

void printText( Request const& request, Streams const& io, Comparison const& comparison ) {
    if( comparison.differs() )
        printDiff( io.out, io.look, comparison );
    else if( request.has( "--only" ) )
        io.out << "no difference in " << comparison.kinds.front().kind->many << '\n';
    else
        io.out << "no difference\n";
}

} // namespace

ExitStatus diff( Request const& request, Streams const& io ) {
    RecordKind const* const only = request.has( "--only" ) ? kindOf( request.option( "--only" ) ) : nullptr;
    auto const old = load( request.words[ 0 ], *request.command, io.err );
    auto const now = load( request.words[ 1 ], *request.command, io.err );
    Comparison const comparison = compare( old, now, only );
    if( request.format == Format::json )
        printJson( io.out, request, comparison );
    else
        printText( request, io, comparison );
    return comparison.differs() ? ExitStatus::no : ExitStatus::done;
}

} // namespace Bfri
