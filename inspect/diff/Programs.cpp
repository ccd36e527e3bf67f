#include "inspect/diff/Programs.h"

#include "inspect/model/Records.h"

namespace Bfri {

Kind kindOf( SurveyedTable const& table ) {
    return !table.record                ? Kind::resources
           : table.type == "match"      ? Kind::tables
           : table.type == "statistics" ? Kind::counters
           : table.type == "stateful"   ? Kind::registers
           : table.isWred               ? Kind::wreds
                                        : Kind::meters;
}

P4Program::P4Program( FileSurvey const& file, UnclaimedHandles& handles ) : file_( &file ) {
    byName_.reserve( file.tables.size() );
    byHandle_.reserve( file.tables.size() );
    for( SurveyedTable const& table : file.tables ) {
        byName_.try_emplace( table.name, &table );
        bool const isInModel = table.resource || table.record || table.isOmitted;
        if( table.handle && isInModel )
            byHandle_.try_emplace( *table.handle, &table );
        addRecords( table, handles );
    }
    for( auto const& quanta : file.learnQuantas ) {
        if( quanta.record )
            recordsOf( Kind::learnQuantas ).push_back( *quanta.record );
    }
    std::sort( recordsOf( Kind::handles ).begin(), recordsOf( Kind::handles ).end() );
}

/// If several files have the same handle, the model has one entry for it: the first file that may have it
/// counts.
void P4Program::addRecords( SurveyedTable const& table, UnclaimedHandles& handles ) {
    if( table.record )
        recordsOf( kindOf( table ) ).push_back( *table.record );
    for( std::size_t i = 0; table.firstAction && i < table.actions.size(); ++i )
        recordsOf( Kind::actions ).push_back( *table.firstAction + i );
    if( !table.resource )
        return;
    recordsOf( Kind::resources ).push_back( *table.resource );
    auto const entry = handles.find( table.handle.value_or( 0 ) );
    if( entry == handles.end() || *entry->second.second != table.name )
        return;
    recordsOf( Kind::handles ).push_back( entry->second.first );
    handles.erase( entry );
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
    return static_cast<std::size_t>(
        std::ranges::count_if( byName_, [ & ]( auto const& entry ) { return other.named( entry.first ); } ) );
}

std::vector<P4Program> programsOf( Configuration const& configuration ) {
    UnclaimedHandles handles;
    for( auto const* const entry : sortedByKey( configuration.parser().resourceHandles() ) )
        handles.try_emplace( entry->first, handles.size(), &entry->second.name );
    std::vector<P4Program> programs;
    for( FileSurvey const& file : configuration.files )
        programs.emplace_back( file, handles );
    return programs;
}

namespace {

/// Programs on a pipe; the 33rd has those without pipes. There may be several where pipelines overlap.
std::vector<P4Program const*> programsOn( std::size_t pipe, std::vector<P4Program> const& programs ) {
    std::vector<P4Program const*> on;
    for( P4Program const& program : programs ) {
        U32 const mask = program.file()->pipeMask;
        if( pipe < 32 ? mask >> pipe & 1 : mask == 0 )
            on.push_back( &program );
    }
    return on;
}

bool haveSameValues( P4Program const& a, P4Program const& b ) {
    return a.file()->digest && a.file()->digest == b.file()->digest;
}

/// Whether it is a program that other pipes ran, or more like one of these than like its own former one.
bool isReplaced( P4Program const& now, P4Program const& former, std::vector<P4Program> const& old ) {
    if( haveSameValues( now, former ) )
        return false;
    std::size_t const kept = now.namesSharedWith( former );
    return std::ranges::any_of( old, [ & ]( P4Program const& other ) {
        return !haveSameValues( other, former ) && &other != &former &&
               ( haveSameValues( now, other ) || now.namesSharedWith( other ) > kept );
    } );
}

} // namespace

std::vector<ProgramPair> pairsOf( std::vector<P4Program> const& old, std::vector<P4Program> const& now ) {
    std::vector<ProgramPair> pairs;
    for( std::size_t pipe = 0; pipe <= 32; ++pipe ) {
        auto const from = programsOn( pipe, old );
        auto const to = programsOn( pipe, now );
        for( std::size_t i = 0; i < std::max( from.size(), to.size() ); ++i ) {
            P4Program const* const one = i < from.size() ? from[ i ] : &noProgram;
            P4Program const* const other = i < to.size() ? to[ i ] : &noProgram;
            auto known = std::ranges::find_if(
                pairs, [ & ]( ProgramPair const& pair ) { return pair.old == one && pair.now == other; } );
            if( known == pairs.end() )
                known = pairs.insert( pairs.end(), { one, other } );
            if( pipe < 32 )
                known->pipes |= U32{ 1 } << pipe;
        }
    }
    for( ProgramPair& pair : pairs )
        pair.isReplaced = pair.old->file() && pair.now->file() && isReplaced( *pair.now, *pair.old, old );
    return pairs;
}

std::vector<PipeComparison> pipesOf( std::vector<ProgramPair> const& pairs ) {
    using Is = PipeComparison::Is;
    std::vector<PipeComparison> pipes;
    for( ProgramPair const& pair : pairs ) {
        FileSurvey const* const from = pair.old->file();
        FileSurvey const* const to = pair.now->file();
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
    std::ranges::stable_sort( pipes, {}, &PipeComparison::pipe );
    return pipes;
}

} // namespace Bfri
