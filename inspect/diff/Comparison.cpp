#include "inspect/diff/Comparison.h"

#include "inspect/diff/KindComparer.h"
#include "inspect/diff/UnreadValues.h"
#include "inspect/stages/StageMap.h"

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

bool isMerged( Kind kind ) {
    return kind == Kind::headers || kind == Kind::hashes || kind == Kind::phvFields;
}

/// The entries of a table in each of its stages; nothing where the file does not state them all.
Value stageSizesOf( SurveyedTable const& table ) {
    std::map<std::int64_t, std::uint64_t> sizes;
    for( Context::SurveyedStageTable const& stage : table.stageTables ) {
        if( !stage.stage || !stage.size )
            return {};
        sizes[ *stage.stage ] += *stage.size;
    }
    return listOf( sizes, []( auto const& entry ) {
        return Row{ { "stage", static_cast<U32>( entry.first ) },
                    { "size", static_cast<U32>( entry.second ) } };
    } );
}

/// To the rows of resources the stages that they take, which the survey knows.
void addStages( std::vector<Row>& rows, Configuration const& configuration ) {
    auto const number = []( PlacedStage const& placed ) { return static_cast<U32>( placed.stage ); };
    auto const placed = placedStages( configuration );
    for( U32 i = 0; i < rows.size(); ++i ) {
        rows[ i ].push_back(
            { "stageNumbers", placed[ i ] ? Value( listOf( *placed[ i ], number ) ) : Value() } );
        rows[ i ].push_back( { "stageSizes", {} } );
    }
    for( FileSurvey const& file : configuration.files ) {
        for( SurveyedTable const& table : file.tables ) {
            if( table.resource && placed[ *table.resource ] )
                rows[ *table.resource ].back().value = stageSizesOf( table );
        }
    }
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

P4Programs::Positions allOf( std::vector<Row> const& rows ) {
    P4Programs::Positions positions( rows.size() );
    for( std::size_t i = 0; i < rows.size(); ++i )
        positions[ i ] = i;
    return positions;
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
        : old_( old ),
          now_( now ),
          scope_( scope ),
          oldPrograms_( old ),
          newPrograms_( now ),
          fields_( old, now ) {
        for( ProgramPair const& pair : pairsOf( oldPrograms_, newPrograms_ ) )
            pairs_.push_back( programsOf( pair ) );
    }

    Comparison compare() {
        Comparison result;
        result.programs = std::max( old_.files.size(), now_.files.size() );
        for( RecordKind const& kind : recordKinds() ) {
            if( !scope_.only || scope_.only == &kind )
                result.kinds.push_back( compareKind( kind ) );
        }
        addHandles( result );
        result.shifted = fields_.shifted();
        if( scope_.only )
            return result;
        result.configuration =
            changesOf( configurationOf( old_.parser() ), configurationOf( now_.parser() ) );
        std::vector<ProgramPair> pairs;
        for( Compared const& one : pairs_ )
            pairs.push_back( one.programs.pair );
        result.pipes = pipesOf( pairs, oldPrograms_, newPrograms_ );
        addUnread( result );
        return result;
    }

  private:
    struct Compared {
        ProgramsOfPipes programs;
        std::unordered_set<String> touched = {};
        std::unordered_set<String> touchedQuantas = {};
    };

    P4Program const& oldOf( ProgramPair const& pair ) const {
        return pair.old ? oldPrograms_.all()[ *pair.old ] : none_;
    }
    P4Program const& newOf( ProgramPair const& pair ) const {
        return pair.now ? newPrograms_.all()[ *pair.now ] : none_;
    }
    Compared programsOf( ProgramPair const& pair ) const {
        Compared one{ { pair } };
        if( !scope_.renames || !pair.old || !pair.now || pair.isReplaced )
            return one;
        one.programs.findsRenames = true;
        one.programs.renames = renamedTables( oldOf( pair ), newOf( pair ) );
        one.programs.quantaRenames = renamedLearnQuantas( *oldOf( pair ).file(), *newOf( pair ).file() );
        return one;
    }
    ComparedPrograms comparedOf( Compared& one, Kind kind = Kind::tables ) const {
        ProgramPair const& pair = one.programs.pair;
        auto& touched = kind == Kind::learnQuantas ? one.touchedQuantas : one.touched;
        return { oldOf( pair ), newOf( pair ), one.programs.renames, pair.pipes, touched };
    }

    KindComparison compareKind( RecordKind const& kind ) {
        RowsOfKind rows{ kind, kind.rows( old_.parser() ), kind.rows( now_.parser() ) };
        if( kind.kind == Kind::resources ) {
            addStages( rows.old, old_ );
            addStages( rows.now, now_ );
        }
        bool const isSurveyed = !old_.files.empty() || !now_.files.empty();
        if( isMerged( kind.kind ) || !isSurveyed )
            return compareMerged( std::move( rows ) );
        auto const olds = oldPrograms_.recordsOf( kind.kind );
        auto const nows = newPrograms_.recordsOf( kind.kind );
        KindComparer comparer( fields_, std::move( rows ), scope_.only );
        for( Compared& one : pairs_ ) {
            ProgramPair const& pair = one.programs.pair;
            ComparedPrograms compared = comparedOf( one, kind.kind );
            comparer.compare( compared, one.programs,
                              kind.kind == Kind::learnQuantas ? one.programs.quantaRenames
                                                              : one.programs.renames,
                              pair.old ? olds[ *pair.old ] : P4Programs::Positions(),
                              pair.now ? nows[ *pair.now ] : P4Programs::Positions() );
        }
        return comparer.result();
    }
    KindComparison compareMerged( RowsOfKind rows ) {
        Kind const kind = rows.kind.kind;
        Compared one;
        Renames const renames =
            scope_.renames && isMerged( kind ) ? renamedMerged( kind, old_, now_ ) : Renames();
        ComparedPrograms compared{ none_, none_, renames, 0, one.touched };
        auto const olds = allOf( rows.old );
        auto const nows = allOf( rows.now );
        KindComparer comparer( fields_, std::move( rows ), scope_.only );
        comparer.compare( compared, one.programs, renames, olds, nows );
        touched_[ kind ] = std::move( one.touched );
        return comparer.result();
    }

    void addHandles( Comparison& result ) {
        result.handles.tally = fields_.handles();
        result.handles.renumbered = fields_.renumbered();
        for( Compared const& one : pairs_ ) {
            ProgramsOfPipes const& programs = one.programs;
            ProgramOwners const old( oldOf( programs.pair ), scope_.only );
            ProgramOwners const now( newOf( programs.pair ), scope_.only );
            addReused( old, now, programs.renames, programs.quantaRenames, programs.actionRenames,
                       programs.pair.pipes, result.handles.reused );
            addDuplicates( old, now, programs.renames, programs.pair.pipes, result.duplicates );
        }
        std::stable_sort( result.handles.reused.begin(), result.handles.reused.end(),
                          []( auto const& a, auto const& b ) { return a.handle < b.handle; } );
    }

    void addUnread( Comparison& result ) {
        for( Compared& one : pairs_ ) {
            ComparedPrograms const compared = comparedOf( one );
            touched_[ Kind::learnQuantas ] = one.touchedQuantas;
            Bfri::addUnread( { compared, touched_, namesChanged( result.kinds ),
                               one.programs.isAnyTableTold || !one.touched.empty() },
                             result.unread );
        }
    }

    Configuration const& old_;
    Configuration const& now_;
    ComparisonScope const scope_;
    P4Programs const oldPrograms_;
    P4Programs const newPrograms_;
    P4Program const none_;
    std::vector<Compared> pairs_;
    FieldComparer fields_;
    NamesOfKinds touched_; ///< but for what tables have
};

/// What only the survey knows.
bool isOfSurvey( Change const& change ) {
    return change.field == "stageNumbers" || change.field == "stageSizes";
}

} // namespace

bool Comparison::differs() const {
    return !pipes.empty() || unread.differs() || modelDiffers() ||
           std::any_of( kinds.begin(), kinds.end(), []( auto const& kind ) { return kind.differs(); } );
}

bool Comparison::modelDiffers() const {
    auto const differsInModel = []( ChangedRecord const& record ) {
        return record.move || record.displaced || record.renamed ||
               !std::all_of( record.fields.begin(), record.fields.end(), isOfSurvey );
    };
    return !configuration.empty() || handles.tally.differing > 0 || !handles.reused.empty() ||
           !duplicates.empty() || shifted.differing > 0 ||
           std::any_of( kinds.begin(), kinds.end(), [ & ]( KindComparison const& kind ) {
               return kind.reordered || !kind.removed.empty() || !kind.added.empty() ||
                      !kind.leftOut.empty() || !kind.cameBack.empty() ||
                      std::any_of( kind.changed.begin(), kind.changed.end(), differsInModel );
           } );
}

Comparison compare( Configuration const& old, Configuration const& now, ComparisonScope const& scope ) {
    return Comparer( old, now, scope ).compare();
}

} // namespace Bfri
