#include "report/Report.h"

#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
#include "cli/terminal/Characters.h"
#include "inspect/diff/Comparison.h"
#include "inspect/report/Chip.h"

#include <cerrno>
#include <cstring>
#include <fmt/ostream.h>
#include <fstream>

namespace Bfri {

namespace {

void writeFile( String const& path, String const& text ) {
    errno = 0;
    std::ofstream file( path, std::ios::binary );
    file << text;
    file.close();
    if( !file )
        throw Failure( ExitStatus::internal, "can't write " + escapeForTerminal( path ) +
                                                 ( errno ? String( ": " ) + std::strerror( errno ) : "" ) );
}

/// The renames of a comparison, so that the pictures pair the same records. The comparison must outlive them.
Renames renamesOf( Comparison const& comparison ) {
    Renames renames;
    for( KindComparison const& kind : comparison.kinds ) {
        for( ChangedRecord const& record : kind.changed ) {
            if( record.renamed && kind.kind->kind != Kind::actions )
                renames.emplace( valueAs<String>( record.now, "name" ),
                                 valueAs<String>( record.row, "name" ) );
        }
    }
    return renames;
}

String pageOfDifference( Chip& chip, Configuration const& old, Rules const* rules ) {
    Comparison const comparison = compare( old, *chip.configuration );
    Chip const oldChip = chipOf( old );
    compare( chip, oldChip, renamesOf( comparison ) );
    return htmlReport( chip, &comparison, rules );
}

} // namespace

ExitStatus report( Request const& request, Streams const& io ) {
    bool const isSvg = request.has( "--svg" ), isDifference = request.words.size() > 1;
    if( isSvg && isDifference )
        throw Failure( ExitStatus::usage, "--svg draws one configuration, not a difference" );
    auto const rules = rulesOf( request );
    Survey const survey = isDifference ? Survey::digests : Survey::facts;
    std::optional<Configuration> old;
    if( isDifference )
        old = load( request.words.front(), *request.command, io.err, survey );
    Configuration const configuration = load( request.words.back(), *request.command, io.err, survey );
    Chip chip = chipOf( configuration );
    String const text = isSvg ? svgFloorPlans( chip )
                        : old ? pageOfDifference( chip, *old, rules ? &*rules : nullptr )
                              : htmlReport( chip, nullptr, rules ? &*rules : nullptr );
    String const path = request.has( "--output" ) ? request.option( "--output" )
                        : isSvg                   ? "report.svg"
                                                  : "report.html";
    if( path == "-" )
        io.out << text;
    else {
        writeFile( path, text );
        fmt::print( io.out, "wrote {}\n", escapeForTerminal( path ) );
    }
    return ExitStatus::done;
}

} // namespace Bfri
