#include "cli/CommandTable.h"
#include "cli/commands/Answers.h"
#include "cli/grammar/Help.h"

namespace Bfri {

ExitStatus manual( Request const&, Streams const& io ) {
    printManual( io.out, program() );
    return ExitStatus::done;
}

} // namespace Bfri
