#include "cli/commands/Answers.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/Records.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

struct Count {
    char const* collection;
    char const* title;
    std::size_t number;
};

std::vector<Count> countsOf( BfResourceParser const& parser ) {
    return {
        { "bfResources", "hardware resources", parser.bfResources().size() },
        { "bfTables", "match tables", parser.bfTables().size() },
        { "bfCounters", "counters", parser.bfCounters().size() },
        { "bfMeters", "meters", parser.bfMeters().size() },
        { "bfWreds", "WRED tables", parser.bfWreds().size() },
        { "bfRegisterInfos", "registers", parser.bfRegisterInfos().size() },
        { "bfLearnQuantaInfos", "learn quantas", parser.bfLearnQuantaInfos().size() },
        { "bfActions", "actions", parser.bfActions().size() },
        { "bfHeaders", "flexible headers", parser.bfHeaders().size() },
        { "bfDynamicHashInfo", "dynamic hash calculations", parser.bfDynamicHashInfo().size() },
        { "ingressPhvContainers", "ingress fields in PHV", parser.ingressPhvContainers().size() },
        { "egressPhvContainers", "egress fields in PHV", parser.egressPhvContainers().size() },
        { "resourceHandles", "placed tables, by handle", parser.resourceHandles().size() },
        { "parentTable", "resources with one parent table", parser.parentTable().size() },
        { "multipleParentTables", "resources with several", parser.multipleParentTables().size() },
    };
}

Row pipelineRow( BfResourceInfo::ZelContextFile const& entry ) {
    return { { "pipeMask", Hex( entry.key().value() ) },
             { "pipes", pipesOf( entry.key().value() ) },
             { "path", entry.value() } };
}

void printJson( Configuration const& configuration, std::ostream& out ) {
    BfResourceParser const& parser = configuration.parser();
    JsonAnswer answer( out );
    answer.member( "switchConf", configuration.path );
    answer.member( "bfrtConfig", parser.bfrtConfig() );
    answer.member( "contextFile", listOf( parser.contextFile(), pipelineRow ) );
    answer.member( "hitBitSmashEntries", parser.hitBitSmashEntries() );
    Row counts;
    for( Count const& count : countsOf( parser ) )
        counts.push_back( { count.collection, static_cast<U32>( count.number ) } );
    answer.member( "counts", std::move( counts ) );
}

void printText( Configuration const& configuration, std::ostream& out ) {
    BfResourceParser const& parser = configuration.parser();
    printFields( out, { { "switch configuration", configuration.isContextFile ? "" : configuration.path },
                        { "run-time configuration", parser.bfrtConfig() } } );
    RowList pipelines{ { { "PIPE MASK", {} }, { "PIPES", {} }, { "CONTEXT FILE", {} } }, {} };
    for( auto const& entry : parser.contextFile() )
        pipelines.rows.push_back( pipelineRow( entry ) );
    out << '\n';
    printColumns( out, pipelines );
    RowList counts{ { { "COUNT", {} }, { "OF", {} } }, {} };
    for( Count const& count : countsOf( parser ) )
        counts.rows.push_back( { { "", static_cast<U32>( count.number ) }, { "", count.title } } );
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
