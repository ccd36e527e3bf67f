#include "cli/CommandTable.h"
#include "cli/commands/Answers.h"
#include "cli/grammar/Completion.h"

namespace Bfri {

/// One completion per line; ":files" where paths will do. A name with a line break in it has no line.
ExitStatus complete( Request const& request, Streams const& io ) {
    Candidates const candidates = candidatesFor( program(), request.words );
    if( candidates.files )
        io.out << ":files\n";
    String const rest = request.words.back().substr( candidates.written.size() );
    for( String const& word : beginningLike( rest, candidates.words ) ) {
        if( word.find( '\n' ) == String::npos )
            io.out << candidates.written << word << '\n';
    }
    return ExitStatus::done;
}

} // namespace Bfri
