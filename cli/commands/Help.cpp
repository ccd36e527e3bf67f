#include "cli/grammar/Help.h"

#include "cli/CommandTable.h"
#include "cli/commands/Answers.h"

namespace Bfri {

ExitStatus help( Request const& request, Streams const& io ) {
    if( request.words.empty() )
        printHelp( io.out, program() );
    else
        printHelp( io.out, program(), *findCommand( program(), request.words.front() ) );
    return ExitStatus::done;
}

} // namespace Bfri
