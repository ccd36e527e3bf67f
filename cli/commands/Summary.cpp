#include "cli/commands/Answers.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/Collections.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

void printJson( Configuration const& configuration, std::ostream& out ) {
    BfResourceParser const& parser = configuration.parser();
    JsonAnswer answer( out );
    answer.member( "switchConf", configuration.path );
    answer.member( "bfrtConfig", parser.bfrtConfig() );
    answer.member( "contextFile", pipelinesOf( parser ) );
    answer.member( "hitBitSmashEntries", parser.hitBitSmashEntries() );
    Row counts;
    for( Collection const& collection : collections() )
        counts.push_back( { collection.member, static_cast<U32>( collection.size( parser ) ) } );
    answer.member( "counts", std::move( counts ) );
}

void printText( Configuration const& configuration, std::ostream& out ) {
    BfResourceParser const& parser = configuration.parser();
    printFields( out, { { "switch configuration", configuration.isContextFile ? "" : configuration.path },
                        { "run-time configuration", parser.bfrtConfig() } } );
    RowList pipelines{ { { "PIPE MASK", {} }, { "PIPES", {} }, { "CONTEXT FILE", {} } }, {} };
    for( Value const& pipeline : pipelinesOf( parser ) )
        pipelines.rows.push_back( std::get<Row>( pipeline.is ) );
    out << '\n';
    printColumns( out, pipelines );
    RowList counts{ { { "COUNT", {} }, { "OF", {} } }, {} };
    for( Collection const& collection : collections() )
        counts.rows.push_back(
            { { "", static_cast<U32>( collection.size( parser ) ) }, { "", collection.title } } );
    counts.rows.push_back( { { "", parser.hitBitSmashEntries() }, { "", "slots of the hit-bit space" } } );
    out << '\n';
    printColumns( out, counts );
}

} // namespace

ExitStatus summary( Configuration const& configuration, Request const& request, Streams const& io ) {
    request.format == Format::json ? printJson( configuration, io.out ) : printText( configuration, io.out );
    return ExitStatus::done;
}

} // namespace Bfri
