#include "inspect/diff/KindComparer.h"

#include "inspect/model/Omissions.h"
#include "inspect/model/Records.h"

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

/// The records that queries by name answer for.
std::vector<bool> firstsOf( std::vector<Row> const& rows ) {
    std::unordered_set<String> seen;
    std::vector<bool> firsts;
    firsts.reserve( rows.size() );
    for( Row const& row : rows ) {
        Identity const identity( row );
        firsts.push_back( seen.insert( keyOf( identity.name, identity.table ) ).second );
    }
    return firsts;
}

} // namespace

Row KindComparer::withPipes( Row row, U32 pipes ) {
    row.push_back( { "pipes", pipesOf( pipes ) } );
    return row;
}

void KindComparer::compare( ComparedPrograms& compared, ProgramsOfPipes& programs, Renames const& renames,
                            P4Programs::Positions const& old, P4Programs::Positions const& now ) {
    bool const isOfActions = rows_.kind.kind == Kind::actions;
    ++programs_;
    isMerged_ = !compared.old.file() && !compared.now.file();
    bool const pairsActions = isOfActions && programs.findsRenames;
    Join const join = joinRecords( { rows_.old, old }, { rows_.now, now }, renames, pairsActions );
    for( Join::Pair const& pair : join.both )
        addPair( compared, programs, pair );
    addGone( fates_, rows_.old, compared, join.removed, false );
    addGone( newFates_, rows_.now, compared, join.added, true );
    isReordered_ |= join.isReordered && rows_.kind.kind != Kind::handles && !isMerged_;
    programs.isAnyTableTold |=
        isOfTables( rows_.kind.kind ) && ( !join.removed.empty() || !join.added.empty() || join.isReordered );
}

void KindComparer::addPair( ComparedPrograms& compared, ProgramsOfPipes& programs, Join::Pair const& pair ) {
    Row const& from = rows_.old[ pair.old ];
    Row const& to = rows_.now[ pair.now ];
    ChangedRecord record = fields_.compare( compared, rows_.kind, from, to );
    record.renamed = pair.isRenamed;
    if( rows_.kind.kind == Kind::handles && !isOnly_ )
        leaveToOthers( record );
    if( Identity const identity( from ); pair.isRenamed && identity.table )
        programs.actionRenames.emplace( keyOf( identity.name, identity.table ), Identity( to ).name );
    fates_[ pair.old ].isThere = true;
    newFates_[ pair.now ].isThere = true;
    joined_.emplace_back( pair, compared.pipes );
    if( !record.fields.empty() || record.move || record.renamed )
        found_.push_back( { std::move( record ), pair.old, pair.now, compared.pipes } );
}

void KindComparer::addGone( std::vector<Fate>& fates, std::vector<Row> const& rows,
                            ComparedPrograms& compared, std::vector<std::size_t> const& positions,
                            bool isNew ) {
    for( std::size_t const position : positions ) {
        if( rows_.kind.kind == Kind::handles && isStillPlaced( rows[ position ], compared, isNew ) )
            continue;
        Fate& fate = fates[ position ];
        fate.isGone = true;
        fate.gone |= compared.pipes;
        Identity const identity( rows[ position ] );
        compared.touched.insert( identity.table ? *identity.table : identity.name );
        if( !fate.omitted )
            fate.omitted = whyOmitted( rows[ position ], compared, isNew );
    }
}

/// Whether the other program has the table on the chip: its entry by handle is then another table's, of a
/// program with the same numbers or of its own.
bool KindComparer::isStillPlaced( Row const& row, ComparedPrograms const& compared, bool isNew ) {
    String const& name = Identity( row ).name;
    P4Program const& other = isNew ? compared.old : compared.now;
    SurveyedTable const* table = other.named( isNew ? name : compared.renames.of( name ) );
    if( !table && isNew ) {
        SurveyedTable const* const former = other.withHandle( valueAs<Hex>( row, "handle" ).value );
        table = former && compared.renames.of( former->name ) == name ? former : nullptr;
    }
    return table && table->resource;
}

/// Why the other configuration's model does not have a table, its actions or a learn quanta, though its
/// context file has it; nothing if the file does not have it.
std::optional<OmissionReason> KindComparer::whyOmitted( Row const& row, ComparedPrograms const& compared,
                                                        bool isNew ) const {
    P4Program const& other = isNew ? compared.old : compared.now;
    Kind const kind = rows_.kind.kind;
    if( !other.file() )
        return std::nullopt;
    Identity const identity( row );
    if( kind == Kind::learnQuantas ) {
        for( auto const& quanta : other.file()->learnQuantas ) {
            if( quanta.isOmitted && quanta.name == identity.name )
                return OmissionReason{ "it has no \"lq_cfg_type\"", { "lq_cfg_type" } };
        }
        return std::nullopt;
    }
    if( kind != Kind::tables && kind != Kind::actions )
        return std::nullopt;
    String const& name = identity.table ? *identity.table : identity.name;
    SurveyedTable const* const table = other.named( isNew ? name : compared.renames.of( name ) );
    return table && table->isOmitted ? std::optional( reasonOf( *table ) ) : std::nullopt;
}

/// Records that were the first of their name, and of which none is now.
void KindComparer::findDisplaced() {
    auto const olds = firstsOf( rows_.old );
    auto const nows = firstsOf( rows_.now );
    std::vector<bool> isKept( rows_.old.size() );
    for( auto const& [ pair, pipes ] : joined_ )
        isKept[ pair.old ] = isKept[ pair.old ] || nows[ pair.now ];
    for( auto const& joined : joined_ ) {
        Join::Pair const& pair = joined.first;
        if( !olds[ pair.old ] || isKept[ pair.old ] )
            continue;
        auto known = std::find_if( found_.begin(), found_.end(), [ & ]( Found const& one ) {
            return one.old == pair.old && one.now == pair.now;
        } );
        if( known == found_.end() )
            known = found_.insert( found_.end(), { {}, pair.old, pair.now, joined.second } );
        known->record.displaced = true;
    }
}

KindComparison KindComparer::result() {
    if( rows_.kind.kind != Kind::handles && programs_ > 1 ) // in one, the first is joined with the first
        findDisplaced();
    KindComparison result{ &rows_.kind };
    result.reordered = isReordered_;
    std::stable_sort( found_.begin(), found_.end(),
                      []( Found const& a, Found const& b ) { return a.old < b.old; } );
    for( Found& one : found_ ) {
        fates_[ one.old ].differs = true;
        one.record.row = isMerged_ ? rows_.old[ one.old ] : withPipes( rows_.old[ one.old ], one.pipes );
        one.record.now = isMerged_ ? rows_.now[ one.now ] : withPipes( rows_.now[ one.now ], one.pipes );
        result.changed.push_back( std::move( one.record ) );
    }
    auto const addAlone = [ & ]( auto const& fates, auto& rows, std::vector<Row>& alone,
                                 std::vector<OmittedRecord>& omitted ) {
        for( std::size_t i = 0; i < rows.size(); ++i ) {
            if( !fates[ i ].isGone )
                continue;
            Row row =
                isMerged_ ? std::move( rows[ i ] ) : withPipes( std::move( rows[ i ] ), fates[ i ].gone );
            if( fates[ i ].omitted )
                omitted.push_back( { std::move( row ), *fates[ i ].omitted } );
            else
                alone.push_back( std::move( row ) );
        }
    };
    for( Fate const& fate : fates_ )
        result.same += fate.isThere && !fate.differs && !fate.isGone;
    addAlone( fates_, rows_.old, result.removed, result.leftOut );
    addAlone( newFates_, rows_.now, result.added, result.cameBack );
    return result;
}

} // namespace Bfri
