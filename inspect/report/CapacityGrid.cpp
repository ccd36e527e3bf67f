#include "inspect/report/CapacityGrid.h"

#include "inspect/model/Records.h"

namespace Bfri {

namespace {

bool isFor( CapacityRule const& rule, GridRow const* row, bool ingress ) {
    if( rule.ingress && *rule.ingress != ingress )
        return false;
    BfResource ofType;
    ofType.type = row ? row->type : 0;
    return !row || matches( rule.type, typeNameOf( ofType ) );
}

/// More than all others where anything is used and nothing is available.
double loadOf( Use const& use ) {
    return use.available > 0 ? static_cast<double>( use.used ) / static_cast<double>( use.available )
                             : static_cast<double>( use.used ) * 1e9;
}

} // namespace

std::vector<std::vector<Use>> capacityUsesOf( Chip const& chip, Rules const& rules ) {
    auto const maps = stageMapsOf( *chip.configuration );
    std::vector<std::vector<Use>> uses( chip.programs.size() );
    for( std::size_t i = 0; i < uses.size(); ++i ) {
        for( StageMap const& map : maps ) {
            bool const isOf = std::any_of( map.files.begin(), map.files.end(), [ & ]( auto const* file ) {
                return file->key().value() == chip.programs[ i ].file->pipeMask;
            } );
            if( isOf )
                uses[ i ] = capacityUses( rules, map );
        }
    }
    return uses;
}

CapacityShare capacityShareOf( std::vector<Use> const& uses, GridRow const* row, bool ingress,
                               Chip const& chip, std::size_t column ) {
    CapacityShare share;
    for( Use const& use : uses ) {
        auto const& rule = static_cast<CapacityRule const&>( *use.rule );
        if( use.stage != chip.stages[ column ] || !isFor( rule, row, ingress ) )
            continue;
        if( share.use && loadOf( *share.use ) >= loadOf( use ) )
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
