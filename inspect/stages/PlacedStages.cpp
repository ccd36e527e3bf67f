#include "inspect/stages/PlacedStages.h"

#include "inspect/check/CheckContext.h"
#include "inspect/load/FileTables.h"

#include <algorithm>
#include <limits>

namespace Bfri {

namespace {

/// As the model has numbers of stages: with 32 bits, also of negative ones. Empty when some do not fit, or
/// are no numbers.
std::vector<Stage> stagesOf( FileTable const& table ) {
    std::vector<Stage> stages;
    for( std::int64_t const number : table.stages ) {
        if( number >= std::numeric_limits<std::int32_t>::min() && number <= std::numeric_limits<U32>::max() )
            stages.push_back( static_cast<U32>( number ) );
    }
    return stages.size() == table.stageTables ? stages : std::vector<Stage>();
}

} // namespace

PlacedStages::PlacedStages( BfResourceInfo::BfResourceParser const& parser ) {
    for( auto const& entry : parser.contextFile() ) {
        U32 const pipeBits = pipeBitsOf( parser, entry.key().value() );
        eachTable( entry.value(), Detail::brief, [ & ]( FileTable const& table ) {
            if( table.handle )
                byHandle_[ *table.handle | pipeBits ].push_back( { table.name, stagesOf( table ) } );
        } );
    }
}

std::optional<std::vector<Stage>> PlacedStages::take( BfResource const& resource ) {
    auto& tables = byHandle_[ resource.handle ];
    auto const found = std::find_if( tables.begin(), tables.end(), [ & ]( Table const& table ) {
        return table.name == resource.name && table.stages.size() == resource.stages &&
               !table.stages.empty() && table.stages.front() == resource.stageStart;
    } );
    if( found == tables.end() )
        return std::nullopt;
    std::vector<Stage> stages = std::move( found->stages );
    tables.erase( found );
    std::sort( stages.begin(), stages.end() );
    stages.erase( std::unique( stages.begin(), stages.end() ), stages.end() );
    return stages;
}

} // namespace Bfri
