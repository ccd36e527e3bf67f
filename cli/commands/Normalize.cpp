#include "cli/commands/Answers.h"
#include "cli/terminal/Characters.h"

namespace Bfri {

ExitStatus normalize( Request const& request, Streams const& io ) {
    // The rule is the same in every model, so that of no configuration will do.
    auto const parser = BfResourceInfo::bfResourceParserFactory( "" );
    for( String const& name : request.words )
        io.out << escapeForTerminal( parser->normalizeFieldName( name ) ) << '\n';
    return ExitStatus::done;
}

} // namespace Bfri
