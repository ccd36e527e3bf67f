#include "inspect/diff/KindComparer.h"

#include "inspect/model/Omissions.h"

namespace Bfri {

namespace {

/// Takes from the record of a placed table what other records say of it, too: its resource, and who owns it.
void leaveToOthers( ChangedRecord& record ) {
    std::erase_if( record.fields, []( Change const& change ) {
        return change.field == "size" || change.field == "stageStart" || change.field == "parent" ||
               change.field == "severalParents";
    } );
}

bool isOfTables( Kind kind ) {
    return kind != Kind::learnQuantas && kind != Kind::headers && kind != Kind::hashes &&
           kind != Kind::phvFields;
}

OmissionReason reasonOf( SurveyedTable const& table ) {
    OmissionReason reason{ whyOmitted( table ) };
    if( table.staticEntries > 0 )
        reason.members.emplace_back( "static_entries" );
    if( !table.isControllable )
        reason.members.emplace_back( "is_resource_controllable" );
    return reason;
}

RecordKey keyOf( String const& name, String const* table ) {
    return { name, table ? std::string_view( *table ) : std::string_view() };
}

RecordKey keyOf( Identity const& identity ) { return keyOf( identity.name, identity.table ); }

/// The records that queries by name answer for.
std::vector<bool> firstsOf( KindRecords const& records ) {
    std::unordered_set<RecordKey, HashOfPair> seen;
    std::vector<bool> firsts;
    for( std::size_t i = 0; i < records.size(); ++i )
        firsts.push_back( seen.insert( keyOf( records.identityOf( i ) ) ).second );
    return firsts;
}

} // namespace

void KindComparer::compareAll( ProgramPair& programs ) {
    compare( programs, positionsOf( old_.records ), positionsOf( now_.records ) );
}

/// Renamed tables count as the same, and so do their actions; actions of one table with different names pair
/// by handle.
void KindComparer::compare( ProgramPair& programs, Positions const& old, Positions const& now ) {
    Renames const& renames = programs.of( kind_.kind ).renames;
    auto const oldTable = [ & ]( Identity const& one ) {
        return one.table ? &renames.of( *one.table ) : nullptr;
    };
    Join join{ {}, old, now };
    join.match(
        [ & ]( std::size_t position ) {
            Identity const one = old_.records.identityOf( position );
            return keyOf( one.table ? one.name : renames.of( one.name ), oldTable( one ) );
        },
        [ & ]( std::size_t position ) { return keyOf( now_.records.identityOf( position ) ); } );
    if( kind_.kind == Kind::actions && programs.findsRenames )
        join.match(
            [ & ]( std::size_t position ) {
                return std::pair( std::string_view( *oldTable( old_.records.identityOf( position ) ) ),
                                  old_.records.handleOf( position ) );
            },
            [ & ]( std::size_t position ) {
                return std::pair( std::string_view( *now_.records.identityOf( position ).table ),
                                  now_.records.handleOf( position ) );
            } );
    ++programs_;
    isMerged_ = programs.isMerged();
    for( auto const& [ before, after ] : join.both )
        addPair( programs, before, after );
    addGone( old_, programs, join.removed );
    addGone( now_, programs, join.added );
    bool const isReordered = join.isReordered();
    isReordered_ |= isReordered && kind_.kind != Kind::handles && !isMerged_;
    programs.isAnyTableTold |=
        isOfTables( kind_.kind ) && ( !join.removed.empty() || !join.added.empty() || isReordered );
}

/// Equal records make no rows.
void KindComparer::addPair( ProgramPair& programs, std::size_t old, std::size_t now ) {
    old_.fates[ old ].isThere = true;
    now_.fates[ now ].isThere = true;
    joined_.push_back( { old, now, programs_, programs.pipes } );
    if( old_.records.equals( old, now_.records, now ) ) {
        handles_.clear();
        old_.records.addHandles( old, handles_ );
        if( fields_.countIfSame( programs, handles_ ) ) {
            if( old_.records.hasHitBits( old ) )
                fields_.countHitBits();
            return;
        }
    }
    ChangedRecord record =
        fields_.compare( programs, kind_, old_.records.rowOf( old ), now_.records.rowOf( now ) );
    if( kind_.kind == Kind::handles && !isOnly_ )
        leaveToOthers( record );
    Identity const from = old_.records.identityOf( old );
    Identity const to = now_.records.identityOf( now );
    record.renamed = keyOf( from ) != keyOf( to );
    if( record.renamed && from.table )
        programs.actions.emplace( keyOf( from ), &to.name );
    if( record.fields.empty() && !record.move && !record.renamed )
        return;
    if( !isMerged_ ) {
        record.row.push_back( { "pipes", pipesOf( programs.pipes ) } );
        record.now.push_back( { "pipes", pipesOf( programs.pipes ) } );
    }
    changed_.try_emplace( { old, programs_ }, std::move( record ) );
}

void KindComparer::addGone( Side& side, ProgramPair& programs, Positions const& positions ) {
    bool const isNew = &side == &now_;
    for( std::size_t const position : positions ) {
        if( kind_.kind == Kind::handles && isStillPlaced( position, programs, isNew ) )
            continue;
        Fate& fate = side.fates[ position ];
        fate.isGone = true;
        fate.gone |= programs.pipes;
        Identity const identity = side.records.identityOf( position );
        programs.of( kind_.kind ).touched.insert( identity.table ? *identity.table : identity.name );
        if( !fate.omitted )
            fate.omitted = whyOmitted( identity, programs, isNew );
    }
}

/// Whether the other program has the table on the chip: its entry by handle is then another table's, of a
/// program with the same numbers or of its own.
bool KindComparer::isStillPlaced( std::size_t position, ProgramPair const& programs, bool isNew ) const {
    KindRecords const& records = ( isNew ? now_ : old_ ).records;
    String const& name = records.identityOf( position ).name;
    Renames const& renames = programs.tables.renames;
    P4Program const& other = isNew ? *programs.old : *programs.now;
    SurveyedTable const* table = other.named( isNew ? name : renames.of( name ) );
    if( !table && isNew ) {
        SurveyedTable const* const former = other.withHandle( records.handleOf( position ) );
        table = former && renames.of( former->name ) == name ? former : nullptr;
    }
    return table && table->resource;
}

/// Why the other configuration's model does not have a table, its actions or a learn quanta, though its
/// context file has it; nothing if the file does not have it.
std::optional<OmissionReason> KindComparer::whyOmitted( Identity const& identity, ProgramPair const& programs,
                                                        bool isNew ) const {
    P4Program const& other = isNew ? *programs.old : *programs.now;
    if( !other.file() )
        return std::nullopt;
    if( kind_.kind == Kind::learnQuantas ) {
        auto const& all = other.file()->learnQuantas;
        bool const isOmitted = std::ranges::any_of(
            all, [ & ]( auto const& quanta ) { return quanta.isOmitted && quanta.name == identity.name; } );
        return isOmitted ? std::optional( OmissionReason{ "it has no \"lq_cfg_type\"", { "lq_cfg_type" } } )
                         : std::nullopt;
    }
    if( kind_.kind != Kind::tables && kind_.kind != Kind::actions )
        return std::nullopt;
    String const& name = identity.table ? *identity.table : identity.name;
    SurveyedTable const* const table = other.named( isNew ? name : programs.tables.renames.of( name ) );
    return table && table->isOmitted ? std::optional( reasonOf( *table ) ) : std::nullopt;
}

/// Records that were the first of their name, and of which none is now.
void KindComparer::findDisplaced() {
    auto const olds = firstsOf( old_.records );
    auto const nows = firstsOf( now_.records );
    std::vector<bool> isKept( olds.size() );
    for( Joined const& one : joined_ )
        isKept[ one.old ] = isKept[ one.old ] || nows[ one.now ];
    for( Joined const& one : joined_ ) {
        if( !olds[ one.old ] || isKept[ one.old ] )
            continue;
        ChangedRecord& record = changed_[ { one.old, one.programs } ];
        record.displaced = true;
        if( record.row.empty() ) {
            record.row = rowOf( old_, one.old, one.pipes );
            record.now = rowOf( now_, one.now, one.pipes );
        }
    }
}

Row KindComparer::rowOf( Side const& side, std::size_t position, U32 pipes ) const {
    Row row = side.records.rowOf( position );
    if( !isMerged_ )
        row.push_back( { "pipes", pipesOf( pipes ) } );
    return row;
}

void KindComparer::addAlone( Side const& side, std::vector<Row>& alone,
                             std::vector<OmittedRecord>& omitted ) const {
    for( std::size_t i = 0; i < side.fates.size(); ++i ) {
        Fate const& fate = side.fates[ i ];
        if( fate.isGone && fate.omitted )
            omitted.push_back( { rowOf( side, i, fate.gone ), *fate.omitted } );
        else if( fate.isGone )
            alone.push_back( rowOf( side, i, fate.gone ) );
    }
}

KindComparison KindComparer::result() {
    if( kind_.kind != Kind::handles && programs_ > 1 ) // in one, the first is joined with the first
        findDisplaced();
    KindComparison result{ &kind_ };
    result.reordered = isReordered_;
    for( auto& [ place, record ] : changed_ ) {
        old_.fates[ place.first ].differs = true;
        result.changed.push_back( std::move( record ) );
    }
    for( Fate const& fate : old_.fates )
        result.same += fate.isThere && !fate.differs && !fate.isGone;
    addAlone( old_, result.removed, result.leftOut );
    addAlone( now_, result.added, result.cameBack );
    return result;
}

} // namespace Bfri
