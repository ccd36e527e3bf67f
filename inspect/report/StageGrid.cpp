#include "inspect/report/StageGrid.h"

#include "inspect/model/Records.h"

#include <array>

namespace Bfri {

GridCell& GridCell::operator+=( GridCell const& other ) {
    resources += other.resources;
    starting += other.starting;
    entries += other.entries;
    return *this;
}

GridCell GridRow::sum() const {
    GridCell sum;
    for( GridCell const& cell : cells )
        sum += cell;
    return sum;
}

std::uint64_t StageGrid::mostEntries() const {
    std::uint64_t most = 0;
    for( auto const* const cells : { &all.cells, &all.was } ) {
        for( GridCell const& cell : *cells )
            most = std::max( most, cell.entries );
    }
    return most;
}

U32 StageGrid::mostResources() const {
    U32 most = 0;
    for( GridRow const& row : rows ) {
        for( GridCell const& cell : row.cells )
            most = std::max( most, cell.resources );
    }
    return most;
}

StageGrid stageGridOf( Chip const& chip, ChipProgram const& program, bool ingress ) {
    std::size_t const stages = chip.stages.size(), oldStages = program.old ? stages : 0;
    StageGrid grid;
    grid.all.cells.resize( stages );
    grid.all.was.resize( oldStages );
    std::array<GridRow, typeCount> rows;
    std::array<bool, typeCount> isAny{};
    auto const count = [ & ]( ChipResource const& resource, std::vector<GridCell> GridRow::*cells ) {
        if( resource.ingress != ingress || resource.stages.empty() )
            return false;
        std::size_t const place = placeOfType( resource.type );
        GridRow& row = rows[ place ];
        if( !std::exchange( isAny[ place ], true ) )
            row = { resource.type, 0, std::vector<GridCell>( stages ), std::vector<GridCell>( oldStages ) };
        for( StageEntries const& one : resource.stages ) {
            GridCell const cell{ 1, &one == &resource.stages.front(), one.entries };
            ( row.*cells )[ chip.columnOf( one.stage ) ] += cell;
            ( grid.all.*cells )[ chip.columnOf( one.stage ) ] += cell;
        }
        return true;
    };
    for( ChipResource const& resource : chip.resourcesOf( program ) ) {
        bool const isCounted = count( resource, &GridRow::cells );
        rows[ placeOfType( resource.type ) ].resources += isCounted;
        grid.all.resources += isCounted;
    }
    if( program.old ) {
        for( ChipResource const& resource : chip.old->resourcesOf( chip.old->programs[ *program.old ] ) )
            count( resource, &GridRow::was );
    }
    for( std::size_t i = 0; i < typeCount; ++i ) {
        if( isAny[ i ] )
            grid.rows.push_back( std::move( rows[ i ] ) );
    }
    return grid;
}

std::vector<std::vector<Use>> capacityUsesOf( Chip const& chip, Rules const& rules ) {
    std::vector<std::vector<Use>> uses( chip.programs.size() );
    for( StageMap const& map : stageMapsByProgram( *chip.configuration ) ) {
        for( auto const* const file : map.files ) {
            for( std::size_t i = 0; i < uses.size(); ++i ) {
                if( file->key().value() == chip.programs[ i ].file->pipeMask )
                    uses[ i ] = capacityUses( rules, map );
            }
        }
    }
    return uses;
}

CapacityShare capacityShareOf( std::vector<Use> const& uses, GridRow const* row, bool ingress,
                               Chip const& chip, std::size_t column ) {
    BfResource ofType;
    ofType.type = row ? row->type : 0;
    /// More than all others where anything is used and nothing is available.
    auto const loadOf = []( Use const& use ) {
        return use.available > 0 ? static_cast<double>( use.used ) / static_cast<double>( use.available )
                                 : static_cast<double>( use.used ) * 1e9;
    };
    CapacityShare share;
    for( Use const& use : uses ) {
        auto const& rule = static_cast<CapacityRule const&>( *use.rule );
        bool const isForIt = use.stage == chip.stages[ column ] &&
                             rule.ingress.value_or( ingress ) == ingress &&
                             ( !row || matches( rule.type, typeNameOf( ofType ) ) );
        if( !isForIt || ( share.use && loadOf( *share.use ) >= loadOf( use ) ) )
            continue;
        share.use = &use;
        share.used = static_cast<std::uint64_t>( use.used );
        if( row )
            share.used = rule.of == StageMeasure::entries ? row->cells[ column ].entries
                                                          : row->cells[ column ].resources;
    }
    return share;
}

} // namespace Bfri
