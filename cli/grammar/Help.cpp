#include "cli/commands/Answers.h"
#include "cli/grammar/CommandLine.h"

namespace Bfri {

ExitStatus help( Request const& request, Streams const& io ) {
    std::vector<char const*> line = { "bfri" };
    for( String const& word : request.words )
        line.push_back( word.c_str() );
    line.push_back( "--help" );
    parseCommandLine( static_cast<int>( line.size() ), line.data(), io.out );
    return ExitStatus::done;
}

} // namespace Bfri
