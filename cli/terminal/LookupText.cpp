#include "cli/terminal/LookupText.h"
#include "cli/terminal/Characters.h"

#include "cli/terminal/TextFormat.h"

namespace Bfri {

namespace {

Row useForPeople( Row row ) {
    if( valueAs<bool>( row, "severalTables" ) )
        row[ 4 ].value = "(several)";
    row.pop_back();
    return row;
}

void printUnknown( std::ostream& err, String const& word, HandleAnswer const& answer, bool pipesInHandles ) {
    err << "bfri: nothing has the handle " << word;
    char const* before = pipesInHandles
                             ? "; with another pipe in the upper four bits: "
                             : "; without a pipe in the upper four bits, as there is no runtime_config: ";
    for( auto const& [ handle, name ] : answer.others )
        err << std::exchange( before, ", " ) << hexText( handle ) << " (" << escapeForTerminal( name ) << ")";
    if( !answer.omitted.empty() )
        err << "; " << escapeForTerminal( sentencesOf( answer.omitted ) );
    if( answer.without0x )
        err << "; did you mean " << hexText( *answer.without0x ) << "?";
    err << '\n';
}

} // namespace

void printHandles( std::ostream& out, TerminalStyle const& look, std::vector<HandleAnswer> const& answers ) {
    constexpr std::size_t fewest = 60; // more than other lists, as names of tables follow names
    auto rows = rowsOf( answers );
    if( rows.empty() )
        return;
    std::transform( rows.begin(), rows.end(), rows.begin(), useForPeople );
    RowList const list{
        { { "HANDLE", {} }, { "KIND", {} }, { "IN FIELD", {} }, { "NAME", {} }, { "TABLE", {} } },
        std::move( rows ) };
    printColumns( out, list, look, fewest );
}

void printRemarks( std::ostream& err, String const& word, HandleAnswer const& answer, bool pipesInHandles ) {
    if( answer.uses.empty() )
        return printUnknown( err, word, answer, pipesInHandles );
    for( Omission const& omitted : answer.omitted )
        err << "bfri: " << word << ": " << escapeForTerminal( sentenceOf( omitted ) ) << '\n';
}

} // namespace Bfri
