#include "inspect/diff/Programs.h"

#include "inspect/model/Records.h"

#include <map>

namespace Bfri {

P4Program::P4Program( FileSurvey const& file ) : file_( &file ) {
    byName_.reserve( file.tables.size() );
    byHandle_.reserve( file.tables.size() );
    for( SurveyedTable const& table : file.tables ) {
        byName_.try_emplace( table.name, &table );
        bool const isInModel = table.resource || table.record || table.isOmitted;
        if( table.handle && isInModel )
            byHandle_.try_emplace( *table.handle, &table );
    }
}

SurveyedTable const* P4Program::named( std::string_view name ) const {
    auto const found = byName_.find( name );
    return found == byName_.end() ? nullptr : found->second;
}

SurveyedTable const* P4Program::withHandle( U32 handle ) const {
    auto const found = byHandle_.find( handle );
    return found == byHandle_.end() ? nullptr : found->second;
}

std::size_t P4Program::namesSharedWith( P4Program const& other ) const {
    return static_cast<std::size_t>( std::count_if(
        byName_.begin(), byName_.end(), [ & ]( auto const& entry ) { return other.named( entry.first ); } ) );
}

P4Programs::P4Programs( Configuration const& configuration ) : configuration_( configuration ) {
    for( FileSurvey const& file : configuration.files )
        all_.emplace_back( file );
}

namespace {

std::optional<U32> recordOf( SurveyedTable const& table, Kind kind ) {
    bool const isMeter = table.type == "meter";
    bool const is = kind == Kind::tables      ? table.type == "match"
                    : kind == Kind::counters  ? table.type == "statistics"
                    : kind == Kind::meters    ? isMeter && !table.isWred
                    : kind == Kind::wreds     ? isMeter && table.isWred
                    : kind == Kind::registers ? table.type == "stateful"
                                              : false;
    return is ? table.record : kind == Kind::resources ? table.resource : std::nullopt;
}

void addActions( SurveyedTable const& table, P4Programs::Positions& records ) {
    for( std::size_t i = 0; table.firstAction && i < table.actions.size(); ++i )
        records.push_back( *table.firstAction + i );
}

} // namespace

std::vector<P4Programs::Positions> P4Programs::recordsOf( Kind kind ) const {
    std::vector<Positions> records( all_.size() );
    if( kind == Kind::handles ) {
        addPlaced( records );
        return records;
    }
    for( std::size_t i = 0; i < all_.size(); ++i ) {
        for( SurveyedTable const& table : all_[ i ].file()->tables ) {
            if( auto const record = recordOf( table, kind ) )
                records[ i ].push_back( *record );
            else if( kind == Kind::actions )
                addActions( table, records[ i ] );
        }
        for( auto const& quanta : all_[ i ].file()->learnQuantas ) {
            if( kind == Kind::learnQuantas && quanta.record )
                records[ i ].push_back( *quanta.record );
        }
    }
    return records;
}

/// If several files have the same handle, the model has one entry for it: the first file that may have it
/// counts.
void P4Programs::addPlaced( std::vector<Positions>& records ) const {
    std::unordered_map<U32, std::pair<std::size_t, String const*>> placed; // not yet a program's
    for( auto const* const entry : sortedByKey( configuration_.parser().resourceHandles() ) )
        placed.try_emplace( entry->first, placed.size(), &entry->second.name );
    for( std::size_t i = 0; i < all_.size(); ++i ) {
        for( SurveyedTable const& table : all_[ i ].file()->tables ) {
            auto const entry = table.resource ? placed.find( table.handle.value_or( 0 ) ) : placed.end();
            if( entry == placed.end() || *entry->second.second != table.name )
                continue;
            records[ i ].push_back( entry->second.first );
            placed.erase( entry );
        }
        std::sort( records[ i ].begin(), records[ i ].end() );
    }
}

namespace {

/// Programs on a pipe; the 33rd has those without pipes. There may be several where pipelines overlap.
P4Programs::Positions programsOn( std::size_t pipe, P4Programs const& programs ) {
    P4Programs::Positions on;
    for( std::size_t i = 0; i < programs.all().size(); ++i ) {
        U32 const mask = programs.all()[ i ].file()->pipeMask;
        if( pipe < 32 ? mask >> pipe & 1 : mask == 0 )
            on.push_back( i );
    }
    return on;
}

bool haveSameValues( P4Program const& a, P4Program const& b ) {
    return a.file()->digest && a.file()->digest == b.file()->digest;
}

/// Whether it is a program that other pipes ran, or more like one of these than like its own former one.
bool isReplaced( P4Program const& now, P4Program const& former, P4Programs const& old ) {
    std::size_t const kept = now.namesSharedWith( former );
    return std::any_of( old.all().begin(), old.all().end(), [ & ]( P4Program const& other ) {
        return !haveSameValues( other, former ) && &other != &former &&
               ( haveSameValues( now, other ) || now.namesSharedWith( other ) > kept );
    } );
}

} // namespace

std::vector<ProgramPair> pairsOf( P4Programs const& old, P4Programs const& now ) {
    std::vector<ProgramPair> pairs;
    for( std::size_t pipe = 0; pipe <= 32; ++pipe ) {
        auto const from = programsOn( pipe, old );
        auto const to = programsOn( pipe, now );
        for( std::size_t i = 0; i < std::max( from.size(), to.size() ); ++i ) {
            ProgramPair pair;
            if( i < from.size() )
                pair.old = from[ i ];
            if( i < to.size() )
                pair.now = to[ i ];
            auto known = std::find_if( pairs.begin(), pairs.end(), [ & ]( ProgramPair const& one ) {
                return one.old == pair.old && one.now == pair.now;
            } );
            if( known == pairs.end() )
                known = pairs.insert( pairs.end(), pair );
            if( pipe < 32 )
                known->pipes |= U32{ 1 } << pipe;
        }
    }
    for( ProgramPair& pair : pairs ) {
        if( !pair.old || !pair.now )
            continue;
        P4Program const& former = old.all()[ *pair.old ];
        P4Program const& present = now.all()[ *pair.now ];
        pair.isReplaced = !haveSameValues( former, present ) && isReplaced( present, former, old );
    }
    return pairs;
}

std::vector<PipeComparison> pipesOf( std::vector<ProgramPair> const& pairs, P4Programs const& old,
                                     P4Programs const& now ) {
    using Is = PipeComparison::Is;
    std::vector<PipeComparison> pipes;
    for( ProgramPair const& pair : pairs ) {
        FileSurvey const* const from = pair.old ? old.all()[ *pair.old ].file() : nullptr;
        FileSurvey const* const to = pair.now ? now.all()[ *pair.now ].file() : nullptr;
        if( from && to && from->digest == to->digest )
            continue;
        PipeComparison one{ 0, !from             ? Is::added
                               : !to             ? Is::removed
                               : pair.isReplaced ? Is::replaced
                                                 : Is::edited };
        if( from )
            one.from = from->path;
        if( to )
            one.to = to->path;
        for( one.pipe = 0; one.pipe < 32; ++one.pipe ) {
            if( pair.pipes >> one.pipe & 1 )
                pipes.push_back( one );
        }
    }
    std::stable_sort( pipes.begin(), pipes.end(),
                      []( PipeComparison const& a, PipeComparison const& b ) { return a.pipe < b.pipe; } );
    return pipes;
}

} // namespace Bfri
