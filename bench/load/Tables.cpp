#include "bench/load/RawTable.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_set>

namespace {

/// Lays the tables' records into a model. What they refer to may be anywhere in the file, so that placed
/// tables and references are gathered before the rest.
class Tables {
  public:
    Tables( String const& path, Model& model ) : path_( path ), model_( model ) {}

    void add( std::vector<RawTable> const& tables );

  private:
    /// From a referenced handle to the lowest handle of those that reference it.
    using Referrers = std::unordered_map<U32, U32>;
    struct Owner {
        U32 handle;
        String table;
    };

    void place( RawTable const& raw );
    void addParents( RawTable const& raw );
    void addResource( RawTable const& raw );
    void addMatchTable( RawTable const& raw );
    void readHitBits( RawTable const& raw, BfTableInfo& record );
    void readReferences( RawTable const& raw, BfTableInfo& record ) const;
    void addCounter( RawTable const& raw );
    void addMeter( RawTable const& raw );
    void addRegister( RawTable const& raw );
    Owner ownerOf( RawTable const& raw, bool direct, Referrers const& referrers ) const;
    String logicalPipe( RawTable const& raw ) const;

    String const& path_;
    Model& model_;
    Referrers counterReferrers_;
    Referrers meterReferrers_;
    Referrers registerReferrers_;
    std::unordered_set<String> severalParents_;
    U32 hitBits_ = 0;
};

std::vector<RawStageTable> const& placedStages( RawTable const& raw ) {
    return raw.hasUnits ? raw.unitStageTables : raw.stageTables;
}

bool isPlaced( RawTable const& raw ) { return raw.type != "condition" && !placedStages( raw ).empty(); }

bool isRecorded( RawTable const& raw ) {
    return raw.type == "match" && raw.isControllable && !raw.hasStaticEntries;
}

/// The handles of the references, entered as referenced by the table.
std::vector<U32> handlesOf( std::vector<RawReference> const& references, U32 referrer,
                            std::unordered_map<U32, U32>& referrers ) {
    std::vector<U32> handles;
    for( RawReference const& reference : references ) {
        handles.push_back( reference.handle );
        U32& lowest = referrers.try_emplace( reference.handle, referrer ).first->second;
        lowest = std::min( lowest, referrer );
    }
    return handles;
}

U32 typeOf( RawTable const& raw ) {
    std::string_view const stage = placedStages( raw ).front().type;
    std::string_view const type = stage == "meter" && raw.meterType == "red" ? "wred" : stage;
    for( auto const& [ number, text ] : bfResourceTypeTexts ) {
        if( text == type )
            return static_cast<U32>( number );
    }
    throw std::runtime_error( "unknown type of a stage table: " + String( type ) );
}

char const* cellType( RawTable const& raw ) {
    if( raw.dualWidth )
        return "uint64_t";
    if( raw.aluWidth > 32 )
        return "*uint8";
    U32 const bytes = ( raw.aluWidth + 7 ) / 8;
    return bytes == 1 ? "uint8_t" : bytes == 2 ? "uint16_t" : "uint32_t";
}

void Tables::add( std::vector<RawTable> const& tables ) {
    for( RawTable const& raw : tables ) {
        if( isPlaced( raw ) )
            place( raw );
    }
    for( String const& name : severalParents_ )
        model_.parents.erase( name );
    for( RawTable const& raw : tables ) {
        if( isPlaced( raw ) )
            addResource( raw );
        if( isRecorded( raw ) )
            addMatchTable( raw );
        else if( raw.type == "statistics" )
            addCounter( raw );
        else if( raw.type == "meter" )
            addMeter( raw );
        else if( raw.type == "stateful" )
            addRegister( raw );
    }
}

void Tables::place( RawTable const& raw ) {
    Placed& placed = model_.placed[ raw.handle ];
    placed.name = raw.name;
    placed.size = raw.size;
    placed.stageStart = static_cast<U8>( placedStages( raw ).front().stageNumber );
    placed.counters = handlesOf( raw.statistics, raw.handle, counterReferrers_ );
    placed.meters = handlesOf( raw.meters, raw.handle, meterReferrers_ );
    placed.registers = handlesOf( raw.registers, raw.handle, registerReferrers_ );
    addParents( raw );
}

void Tables::addParents( RawTable const& raw ) {
    for( RawAction const& action : raw.actions ) {
        for( std::string_view const resource : action.indirectResources ) {
            auto const [ parent, isNew ] = model_.parents.try_emplace( String( resource ), raw.name );
            if( !isNew && parent->second != raw.name )
                severalParents_.insert( parent->first );
        }
    }
}

void Tables::addResource( RawTable const& raw ) {
    auto const& stages = placedStages( raw );
    model_.resources.push_back( { .name = String( raw.name ),
                                  .handle = raw.handle,
                                  .type = typeOf( raw ),
                                  .size = raw.size,
                                  .ingress = raw.direction == "ingress",
                                  .stages = static_cast<U32>( stages.size() ),
                                  .stageStart = stages.front().stageNumber } );
}

void Tables::addMatchTable( RawTable const& raw ) {
    BfTableInfo& record = model_.tables.emplace_back();
    record.name = raw.name;
    record.handle = raw.handle;
    record.size = raw.size;
    record.maxEntries = raw.size;
    record.maxPrios = 255;
    record.maxPartitions = raw.partitions;
    record.hasActionProfile = raw.hasActionProfile;
    record.logicalPipe = logicalPipe( raw );
    readReferences( raw, record );
    readHitBits( raw, record );
    for( RawAction const& action : raw.actions )
        model_.actions.push_back( { action.handle, String( action.name ), record.name } );
}

void Tables::readHitBits( RawTable const& raw, BfTableInfo& record ) {
    bool const byUnits = raw.matchType == "chained_lpm" || raw.matchType == "algorithmic_tcam";
    record.totalEntries = byUnits ? 0 : raw.size;
    for( RawStageTable const& stage : byUnits ? raw.unitStageTables : raw.stageTables ) {
        record.totalEntries += byUnits ? stage.size : 0;
        record.hitBitSupported |= stage.hasIdleTime;
    }
    if( !record.hitBitSupported )
        return;
    record.idleTimePrecision = raw.stageTables.empty() ? 1 : raw.stageTables.front().precision;
    record.hitBitSmashOffset = hitBits_;
    record.hitBitSmashLast = hitBits_ + record.totalEntries / 32 + 1;
    hitBits_ = record.hitBitSmashLast + 1;
}

void Tables::readReferences( RawTable const& raw, BfTableInfo& record ) const {
    if( !raw.actionData.empty() && raw.actionData.front().howReferenced == "indirect" ) {
        record.adtHandle = raw.actionData.front().handle;
        record.adtName = raw.actionData.front().name;
        record.maxAdtEntries = model_.placed.at( record.adtHandle ).size;
    }
    if( !raw.selection.empty() ) {
        record.selHandle = raw.selection.front().handle;
        record.selName = raw.selection.front().name;
        record.maxSelEntries = model_.placed.at( record.selHandle ).size;
        record.maxSelGroups = 2;
    }
}

void Tables::addCounter( RawTable const& raw ) {
    bool const direct = raw.howReferenced != "indirect";
    Owner owner = ownerOf( raw, direct, counterReferrers_ );
    bool const both = raw.statisticsType == "packets_and_bytes";
    model_.counters.push_back( { .name = String( raw.name ),
                                 .handle = owner.handle,
                                 .ownHandle = raw.handle,
                                 .size = raw.size,
                                 .direct = direct,
                                 .bytes = both || raw.statisticsType == "bytes",
                                 .packets = both || raw.statisticsType == "packets",
                                 .associatedTable = std::move( owner.table ),
                                 .logicalPipe = logicalPipe( raw ) } );
}

void Tables::addMeter( RawTable const& raw ) {
    bool const direct = raw.howReferenced == "direct";
    Owner owner = ownerOf( raw, direct, meterReferrers_ );
    if( raw.meterType == "red" ) {
        model_.wreds.push_back( { String( raw.name ), owner.handle, direct, logicalPipe( raw ) } );
        return;
    }
    model_.meters.push_back( { .name = String( raw.name ),
                               .handle = owner.handle,
                               .direct = direct,
                               .pps = raw.meterGranularity == "packets",
                               .hasPreColor = raw.hasPreColor,
                               .associatedTable = std::move( owner.table ),
                               .logicalPipe = logicalPipe( raw ) } );
}

void Tables::addRegister( RawTable const& raw ) {
    bool const indirect = raw.howReferenced == "indirect";
    model_.registers.push_back( { .name = String( raw.name ),
                                  .handle = ownerOf( raw, !indirect, registerReferrers_ ).handle,
                                  .indirect = indirect,
                                  .dataType = cellType( raw ),
                                  .width = raw.aluWidth,
                                  .dualWidth = raw.dualWidth } );
}

Tables::Owner Tables::ownerOf( RawTable const& raw, bool direct, Referrers const& referrers ) const {
    if( direct ) {
        U32 const handle = referrers.at( raw.handle );
        return { handle, model_.placed.at( handle ).name };
    }
    auto const parent = model_.parents.find( String( raw.name ) );
    return { raw.handle, parent == model_.parents.end() ? String() : parent->second };
}

String Tables::logicalPipe( RawTable const& raw ) const {
    if( !raw.logicalPipe.empty() )
        return String( raw.logicalPipe );
    if( path_.ends_with( "context_a.json" ) )
        return "a";
    return path_.ends_with( "context_b.json" ) ? "b" : "";
}

} // namespace

void addTables( std::vector<RawTable> const& tables, String const& path, Model& model ) {
    Tables( path, model ).add( tables );
}
