#include "cli/commands/Answers.h"
#include "cli/commands/Meant.h"
#include "cli/terminal/PageText.h"
#include "inspect/rows/JsonFormat.h"

#include <fmt/format.h>

namespace Bfri {

namespace {

[[noreturn]] void refuse( Configuration const& configuration, OnlyReferredTo const& handle ) {
    String const known = sentencesOf( OmittedTables( configuration ).withHandle( handle.handle ) );
    throw Failure(
        ExitStatus::no,
        fmt::format( "nothing has the handle {} as its own; {}these refer to it:", hexText( handle.handle ),
                     known.empty() ? known : escapeForTerminal( known ) + "; " ),
        { handle.referrers.begin(), handle.referrers.end() } );
}

std::vector<Page> pagesMeant( Configuration const& configuration, String const& word ) {
    PagesFound found = foundInReadings(
        word, [ & ]( String const& reading ) { return pagesFor( configuration, reading ); } );
    if( auto const* const handle = std::get_if<OnlyReferredTo>( &found ) )
        refuse( configuration, *handle );
    if( auto const* const several = std::get_if<SeveralRecords>( &found ) )
        refuse( word, *several );
    if( auto const* const meaning = std::get_if<Meaning>( &found ) )
        refuse( configuration, word, *meaning, { "record named", "records", "names", true } );
    return std::get<std::vector<Page>>( std::move( found ) );
}

} // namespace

ExitStatus show( Configuration const& configuration, Request const& request, Streams const& io ) {
    auto pages = pagesMeant( configuration, request.words[ 1 ] );
    if( request.format == Format::json )
        JsonAnswer( io.out ).members( rowOf( std::move( pages ) ) );
    else
        printPages( io.out, io.look, pages );
    return ExitStatus::done;
}

} // namespace Bfri
