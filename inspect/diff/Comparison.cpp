#include "inspect/diff/Comparison.h"

#include "inspect/diff/KindComparer.h"

namespace Bfri {

namespace {

bool isMerged( Kind kind ) {
    return kind == Kind::headers || kind == Kind::hashes || kind == Kind::phvFields;
}

/// What the configuration says besides paths, and what the records share.
Row configurationOf( BfResourceParser const& parser ) {
    auto const mask = []( auto const& entry ) { return Hex( entry.key().value() ); };
    return { { "pipeMasks", listOf( parser.contextFile(), mask ) },
             { "handlesCarryPipe", !parser.bfrtConfig().empty() },
             { "hitBitSmashEntries", parser.hitBitSmashEntries() } };
}

std::vector<Change> changesOf( Row const& from, Row const& to ) {
    std::vector<Change> changes;
    for( std::size_t i = 0; i < from.size(); ++i ) {
        if( !same( from[ i ].value, to[ i ].value ) )
            changes.push_back( { from[ i ].name, from[ i ].value, to[ i ].value } );
    }
    return changes;
}

/// The records whose fields differ, renumbered handles apart.
NamesOfKinds namesChanged( std::vector<KindComparison> const& kinds ) {
    NamesOfKinds names;
    for( KindComparison const& kind : kinds ) {
        for( ChangedRecord const& record : kind.changed ) {
            if( record.hasChanged() )
                names[ kind.kind->kind ].insert( Identity( record.row ).name );
        }
    }
    return names;
}

/// Two configurations while they are compared.
class Comparer {
  public:
    Comparer( Configuration const& old, Configuration const& now, ComparisonScope const& scope )
        : old_( old ), now_( now ), scope_( scope ) {
        for( ProgramPair& pair : pairs_ ) {
            pair.findsRenames = scope_.renames && pair.old->file() && pair.now->file() && !pair.isReplaced;
            if( !pair.findsRenames )
                continue;
            pair.tables.renames = renamedTables( *pair.old, *pair.now );
            pair.learnQuantas.renames = renamedLearnQuantas( *pair.old->file(), *pair.now->file() );
        }
    }

    Comparison compare() {
        Comparison result;
        result.programs = std::max( oldPrograms_.size(), newPrograms_.size() );
        for( RecordKind const& kind : recordKinds() ) {
            if( !scope_.only || scope_.only == &kind )
                result.kinds.push_back( compareKind( kind ) );
        }
        result.handles = { fields_.handles(), fields_.renumbered() };
        for( ProgramPair const& pair : pairs_ )
            addOwnerChanges( pair, scope_.only, result );
        std::ranges::stable_sort( result.handles.reused, {}, &ReusedHandle::handle );
        result.shifted = fields_.shifted();
        if( scope_.only )
            return result;
        result.configuration =
            changesOf( configurationOf( old_.parser() ), configurationOf( now_.parser() ) );
        result.pipes = pipesOf( pairs_ );
        auto const changed = namesChanged( result.kinds );
        for( ProgramPair const& pair : pairs_ ) {
            touched_[ Kind::learnQuantas ] = pair.learnQuantas.touched;
            addUnread( pair, touched_, changed, result.unread );
        }
        return result;
    }

  private:
    KindComparison compareKind( RecordKind const& kind ) {
        KindComparer comparer( fields_, kind, KindRecords( kind, old_, oldOwners_ ),
                               KindRecords( kind, now_, newOwners_ ), scope_.only );
        if( isMerged( kind.kind ) || pairs_.empty() ) {
            ProgramPair all;
            if( scope_.renames && isMerged( kind.kind ) )
                all.tables.renames = renamedMerged( kind.kind, old_, now_ );
            comparer.compareAll( all );
            touched_[ kind.kind ] = std::move( all.tables.touched );
        } else {
            for( ProgramPair& pair : pairs_ )
                comparer.compare( pair, pair.old->recordsOf( kind.kind ), pair.now->recordsOf( kind.kind ) );
        }
        return comparer.result();
    }

    Configuration const& old_;
    Configuration const& now_;
    ComparisonScope const scope_;
    std::vector<P4Program> const oldPrograms_ = programsOf( old_ );
    std::vector<P4Program> const newPrograms_ = programsOf( now_ );
    Owners const oldOwners_ = Owners( old_.parser() );
    Owners const newOwners_ = Owners( now_.parser() );
    std::vector<ProgramPair> pairs_ = pairsOf( oldPrograms_, newPrograms_ );
    FieldComparer fields_ = FieldComparer( old_, now_ );
    NamesOfKinds touched_ = {}; ///< but for what tables have
};

/// What only the survey knows.
bool isOfSurvey( Change const& change ) {
    return change.field == "stageNumbers" || change.field == "stageSizes";
}

} // namespace

Identity::Identity( Row const& row )
    : name( valueAs<String>( row, "name" ) ),
      table( std::get_if<String>( &valueOf( row, "tableName" ).is ) ) {}

bool Comparison::differs() const {
    return !pipes.empty() || unread.differs() || modelDiffers() ||
           std::ranges::any_of( kinds, &KindComparison::differs );
}

bool Comparison::modelDiffers() const {
    auto const differsInModel = []( ChangedRecord const& record ) {
        return record.move || record.displaced || record.renamed ||
               !std::ranges::all_of( record.fields, isOfSurvey );
    };
    return !configuration.empty() || handles.tally.differing > 0 || !handles.reused.empty() ||
           !duplicates.empty() || shifted.differing > 0 ||
           std::ranges::any_of( kinds, [ & ]( KindComparison const& kind ) {
               return kind.hasOtherRecords() || std::ranges::any_of( kind.changed, differsInModel );
           } );
}

Comparison compare( Configuration const& old, Configuration const& now, ComparisonScope const& scope ) {
    return Comparer( old, now, scope ).compare();
}

} // namespace Bfri
