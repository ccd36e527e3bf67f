#include "inspect/diff/KindComparer.h"

#include "inspect/model/ListedRow.h"
#include "inspect/stages/StageMap.h"

namespace Bfri {

namespace {

/// The stages of a resource, which the survey knows, and its entries in each where the file states them all.
void addStages( Row& row, SurveyedTable const* table ) {
    auto const placed = table ? stagesOf( *table ) : std::nullopt;
    Value numbers;
    Value sizes;
    if( placed ) {
        auto const isStated = []( PlacedStage const& stage ) { return stage.stated == stage.tables; };
        numbers =
            listOf( *placed, []( PlacedStage const& stage ) { return static_cast<U32>( stage.stage ); } );
        if( std::ranges::all_of( *placed, isStated ) )
            sizes = listOf( *placed, []( PlacedStage const& stage ) {
                return Row{ { "stage", static_cast<U32>( stage.stage ) },
                            { "size", static_cast<U32>( stage.entries ) } };
            } );
    }
    row.push_back( { "stageNumbers", std::move( numbers ) } );
    row.push_back( { "stageSizes", std::move( sizes ) } );
}

bool haveSameStages( SurveyedTable const* a, SurveyedTable const* b ) {
    if( !a || !b )
        return a == b;
    return std::equal( a->stageTables.begin(), a->stageTables.end(), b->stageTables.begin(),
                       b->stageTables.end(), []( auto const& one, auto const& other ) {
                           return one.stage == other.stage && one.size == other.size;
                       } );
}

} // namespace

KindRecords::KindRecords( RecordKind const& kind, Configuration const& configuration, Owners const& owners )
    : parser_( configuration.parser() ), owners_( owners ) {
    addRecords( kind );
    if( kind.kind == Kind::resources )
        addTables( configuration );
}

void KindRecords::addRecords( RecordKind const& kind ) {
    switch( kind.kind ) {
    case Kind::tables:
        return addAll( parser_.bfTables() );
    case Kind::resources:
        return addAll( parser_.bfResources() );
    case Kind::counters:
        return addAll( parser_.bfCounters() );
    case Kind::meters:
        return addAll( parser_.bfMeters() );
    case Kind::wreds:
        return addAll( parser_.bfWreds() );
    case Kind::registers:
        return addAll( parser_.bfRegisterInfos() );
    case Kind::learnQuantas:
        return addAll( parser_.bfLearnQuantaInfos() );
    case Kind::actions:
        return addAll( parser_.bfActions() );
    case Kind::handles:
        for( auto const* const entry : sortedByKey( parser_.resourceHandles() ) )
            records_.emplace_back( &entry->second );
        return;
    case Kind::headers:
    case Kind::hashes:
    case Kind::phvFields:
        rows_ = kind.rows( parser_ );
    }
}

void KindRecords::addTables( Configuration const& configuration ) {
    tables_.resize( records_.size() );
    for( FileSurvey const& file : configuration.files ) {
        for( SurveyedTable const& table : file.tables ) {
            if( table.resource )
                tables_[ *table.resource ] = &table;
        }
    }
}

template<class Sequence>
void KindRecords::addAll( Sequence const& records ) {
    records_.reserve( records.size() );
    for( auto const& record : records )
        records_.emplace_back( &record );
}

template<class OneRecord>
Owners::Owner KindRecords::ownerOf( OneRecord const& record ) const {
    if constexpr( hasOwner<OneRecord> )
        return owners_.of( record );
    else if constexpr( namesItsTable<OneRecord> )
        return { .several = parser_.multipleParentTablesHas( record.name ) };
    else
        return {};
}

Identity KindRecords::identityOf( std::size_t position ) const {
    auto const identity = []( auto const* record ) {
        if constexpr( requires { record->tableName; } )
            return Identity( record->name, &record->tableName );
        else
            return Identity( record->name );
    };
    return rows_.empty() ? std::visit( identity, records_[ position ] ) : Identity( rows_[ position ] );
}

Row KindRecords::rowOf( std::size_t position ) const {
    if( !rows_.empty() )
        return rows_[ position ];
    Row row = std::visit( [ & ]( auto const* record ) { return listedRow( *record, ownerOf( *record ) ); },
                          records_[ position ] );
    if( !tables_.empty() )
        addStages( row, tables_[ position ] );
    return row;
}

bool KindRecords::equals( std::size_t position, KindRecords const& other, std::size_t otherPosition ) const {
    if( !rows_.empty() ||
        ( !tables_.empty() && !haveSameStages( tables_[ position ], other.tables_[ otherPosition ] ) ) )
        return false;
    auto const isSame = [ & ]( auto const* record ) {
        auto const* const counterpart = std::get<decltype( record )>( other.records_[ otherPosition ] );
        Owners::Owner const owner = ownerOf( *record );
        Owners::Owner const otherOwner = other.ownerOf( *counterpart );
        return *record == *counterpart && owner.table == otherOwner.table &&
               owner.several == otherOwner.several;
    };
    return std::visit( isSame, records_[ position ] );
}

U32 KindRecords::handleOf( std::size_t position ) const {
    return std::visit( []( auto const* record ) { return record->handle; }, records_[ position ] );
}

void KindRecords::addHandles( std::size_t position, std::vector<U32>& handles ) const {
    auto const add = [ & ]( auto const* record ) {
        handles.push_back( record->handle );
        if constexpr( requires { record->adtHandle; } )
            handles.insert( handles.end(), { record->adtHandle, record->selHandle } );
        if constexpr( requires { record->ownHandle; } )
            handles.push_back( record->ownHandle );
        if constexpr( requires { record->statReferences(); } ) {
            for( auto const* const list :
                 { &record->statReferences(), &record->meterReferences(), &record->statefulReferences() } )
                handles.insert( handles.end(), list->begin(), list->end() );
        }
    };
    std::visit( add, records_[ position ] );
}

bool KindRecords::hasHitBits( std::size_t position ) const {
    auto const* const table = std::get_if<BfTableInfo const*>( &records_[ position ] );
    return table && ( *table )->hitBitSupported;
}

} // namespace Bfri
