#pragma once

#include "cli/Commands.h"
#include "cli/CsvFormat.h"
#include "cli/JsonFormat.h"
#include "cli/TextFormat.h"

namespace Bfri {

/// Prints records in the format asked for. Machines get a row of `all` for each, in JSON as the member of the
/// given name; people get the columns of `telling`.
template<class Record, class Records, class All, class Telling>
void printRecords( std::ostream& out, Format format, std::string_view member, Records const& records,
                   All const& all, Telling const& telling ) {
    switch( format ) {
    case Format::text:
        return printColumns( out, rowsOf<Record>( records, telling ) );
    case Format::csv:
        return printCsv( out, rowsOf<Record>( records, all ) );
    case Format::json:
        return JsonAnswer( out ).member( member, listOf( records, all ) );
    }
}

} // namespace Bfri
