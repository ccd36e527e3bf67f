#include "cli/commands/Answers.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/Collections.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

void printJson( BfResourceParser const& parser, std::ostream& out ) {
    JsonAnswer answer( out );
    answer.member( "switchConf", parser.switchConf() );
    answer.member( "bfrtConfig", parser.bfrtConfig() );
    answer.member( "contextFile", pipelinesOf( parser ) );
    answer.member( "hitBitSmashEntries", parser.hitBitSmashEntries() );
    Row counts;
    for( Collection const& collection : collections() )
        counts.push_back( { collection.member, static_cast<U32>( collection.size( parser ) ) } );
    answer.member( "counts", std::move( counts ) );
}

void printText( BfResourceParser const& parser, std::ostream& out ) {
    printFields( out, { { "switch configuration", parser.switchConf() },
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

ExitStatus summary( Model const& model, Request const& request, Streams const& io ) {
    auto const& parser = *model.parser();
    request.format == Format::json ? printJson( parser, io.out ) : printText( parser, io.out );
    return ExitStatus::done;
}

} // namespace Bfri
