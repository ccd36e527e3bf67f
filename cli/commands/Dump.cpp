#include "cli/commands/Answers.h"
#include "inspect/model/RecordKinds.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

ExitStatus dump( Configuration const& configuration, Request const&, Streams const& io ) {
    auto const& parser = configuration.parser();
    JsonAnswer answer( io.out );
    answer.member( "switchConf", configuration.path );
    answer.member( "contextFile", listOf( parser.contextFile(), []( auto const& entry ) {
                       return Row{ { "pipeMask", Hex( entry.key().value() ) }, { "path", entry.value() } };
                   } ) );
    answer.member( "bfrtConfig", parser.bfrtConfig() );
    answer.member( "hitBitSmashEntries", parser.hitBitSmashEntries() );
    for( Collection const& collection : collections() )
        answer.member( collection.member, collection.content( parser ) );
    return ExitStatus::done;
}

} // namespace Bfri
