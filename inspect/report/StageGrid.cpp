#include "inspect/report/StageGrid.h"

#include <array>

namespace Bfri {

namespace {

void count( ChipResource const& resource, Chip const& chip, std::vector<GridCell>& cells ) {
    cells.resize( chip.stages.size() );
    for( StageEntries const& place : resource.stages )
        cells[ chip.columnOf( place.stage ) ] +=
            GridCell{ 1, &place == &resource.stages.front(), place.entries };
}

void add( std::vector<GridCell>& sums, std::vector<GridCell> const& cells ) {
    sums.resize( std::max( sums.size(), cells.size() ) );
    for( std::size_t i = 0; i < cells.size(); ++i )
        sums[ i ] += cells[ i ];
}

} // namespace

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
    std::array<GridRow, typeCount> rows;
    auto const rowOf = [ & ]( ChipResource const& resource ) -> GridRow& {
        GridRow& row = rows[ placeOfType( resource.type ) ];
        row.type = resource.type;
        return row;
    };
    for( ChipResource const& resource : chip.resourcesOf( program ) ) {
        if( resource.ingress != ingress || resource.stages.empty() )
            continue;
        ++rowOf( resource ).resources;
        count( resource, chip, rowOf( resource ).cells );
    }
    if( program.old ) {
        for( ChipResource const& resource : chip.old->resourcesOf( chip.old->programs[ *program.old ] ) ) {
            if( resource.ingress == ingress && !resource.stages.empty() )
                count( resource, chip, rowOf( resource ).was );
        }
    }
    StageGrid grid;
    for( GridRow& row : rows ) {
        if( row.cells.empty() && row.was.empty() )
            continue;
        row.cells.resize( chip.stages.size() );
        row.was.resize( program.old ? chip.stages.size() : 0 );
        grid.all.resources += row.resources;
        add( grid.all.cells, row.cells );
        add( grid.all.was, row.was );
        grid.rows.push_back( std::move( row ) );
    }
    return grid;
}

} // namespace Bfri
