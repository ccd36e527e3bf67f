#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/RecordKinds.h"
#include "inspect/rows/JsonFormat.h"

#include <cctype>
#include <deque>

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

Row countsOfRecords( BfResourceParser const& parser ) {
    Row counts;
    for( Collection const& collection : collections() )
        counts.push_back( { collection.member, static_cast<U32>( collection.size( parser ) ) } );
    return counts;
}

/// "WRED tables", "WRED table" of one.
char const* titleOf( Collection const& collection, std::size_t count ) {
    bool const isOne = count == 1 && collection.kind &&
                       std::string_view( collection.title ) == kindOf( *collection.kind ).nouns;
    return isOne ? kindOf( *collection.kind ).noun : collection.title;
}

/// The members of the JSON object.
Row summaryRow( Configuration const& configuration ) {
    BfResourceParser const& parser = configuration.parser();
    return { { "switchConf", configuration.path },
             { "bfrtConfig", parser.bfrtConfig() },
             { "contextFile", listOf( parser.contextFile(), pipelineRow ) },
             { "hitBitSmashEntries", parser.hitBitSmashEntries() },
             { "counts", countsOfRecords( parser ) } };
}

void printText( Configuration const& configuration, std::ostream& out ) {
    BfResourceParser const& parser = configuration.parser();
    printFields( out, { { "switch configuration", configuration.isContextFile ? "" : configuration.path },
                        { "run-time configuration", parser.bfrtConfig() } } );
    RowList pipelines{ { { "PIPE MASK", {} }, { "PIPES", {} }, { "CONTEXT FILE", {} } }, {} };
    for( auto const& file : parser.contextFile() )
        pipelines.rows.push_back( pipelineRow( file ) );
    out << '\n';
    printColumns( out, pipelines );
    RowList counts{ { { "COUNT", {} }, { "OF", {} } }, {} };
    for( Collection const& collection : collections() )
        counts.rows.push_back( { { "", static_cast<U32>( collection.size( parser ) ) },
                                 { "", titleOf( collection, collection.size( parser ) ) } } );
    counts.rows.push_back( { { "", parser.hitBitSmashEntries() }, { "", "slots of the hit-bit space" } } );
    out << '\n';
    printColumns( out, counts );
}

} // namespace

ExitStatus summary( Configuration const& configuration, Request const& request, Streams const& io ) {
    if( request.format == Format::json )
        JsonAnswer( io.out ).members( summaryRow( configuration ) );
    else
        printText( configuration, io.out );
    return ExitStatus::done;
}

std::vector<Row> summaryRows( Configuration const& configuration, Request const& ) {
    return { summaryRow( configuration ) };
}

/// A line for each configuration, with the number of context files and of the records of each kind.
void printSummaries( Answers&& answers, Request const& request, Streams const& io ) {
    if( request.format == Format::json )
        return printForPrograms( std::move( answers ), "configurations", request, io );
    RowList list{ { { "CONF", "" }, { "FILES", {} } }, {} };
    std::deque<String> titles; // which the header refers to
    for( RecordKind const& kind : recordKinds() ) {
        String& title = titles.emplace_back( kind.many );
        std::ranges::transform( title, title.begin(), []( unsigned char c ) { return std::toupper( c ); } );
        if( kind.isCounted )
            list.header.push_back( { title, {} } );
    }
    for( Row const& row : answers.rows ) {
        Row& line = list.rows.emplace_back( Row{ row.front() } );
        line.push_back( { "", static_cast<U32>( valueAs<List>( row, "contextFile" ).size() ) } );
        for( RecordKind const& kind : recordKinds() ) {
            if( kind.isCounted )
                line.push_back( { "", valueOf( valueAs<Row>( row, "counts" ), kind.member ) } );
        }
    }
    printColumns( io.out, list, io.look );
}

} // namespace Bfri
