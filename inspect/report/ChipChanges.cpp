// What differs between two chips: marks, and ghosts where something was.

#include "inspect/report/Chip.h"

#include "inspect/model/Records.h"

#include <set>
#include <tuple>
#include <unordered_set>

namespace Bfri {

namespace {

/// The program with the same pipes; the only one where both have but one.
std::optional<std::size_t> oldProgramOf( ChipProgram const& program, Chip const& now, Chip const& old ) {
    for( std::size_t i = 0; i < old.programs.size(); ++i ) {
        if( old.programs[ i ].pipes == program.pipes )
            return i;
    }
    if( now.programs.size() == 1 && old.programs.size() == 1 )
        return 0;
    return std::nullopt;
}

/// Hands out the older ones of each name, in their order.
template<class Part>
class OldByName {
  public:
    explicit OldByName( std::span<Part const> parts ) {
        for( auto part = parts.rbegin(); part != parts.rend(); ++part )
            parts_[ part->name() ].push_back( &*part );
    }
    Part const* take( std::string_view name ) {
        auto const found = parts_.find( name );
        if( found == parts_.end() || found->second.empty() )
            return nullptr;
        Part const* const part = found->second.back();
        found->second.pop_back();
        return part;
    }

  private:
    std::unordered_map<std::string_view, std::vector<Part const*>> parts_;
};

auto traitsOf( BfTableCounterInfo const& c ) { return std::tuple( c.direct, c.bytes, c.packets ); }
auto traitsOf( BfTableMeterInfo const& m ) { return std::tuple( m.direct, m.pps, m.hasPreColor ); }
auto traitsOf( BfTableWredInfo const& w ) { return std::tuple( w.direct ); }
auto traitsOf( BfRegisterInfo const& r ) {
    return std::tuple( r.indirect, r.dataType, r.width, r.dualWidth );
}
auto traitsOf( BfTableInfo const& t ) {
    return std::tuple( t.hitBitSupported, t.idleTimePrecision, t.maxPartitions, t.hasActionProfile,
                       t.maxAdtEntries, t.maxSelGroups, t.maxSelEntries, t.adtName, t.selName,
                       t.logicalPipe );
}

bool haveSameTraits( ChipResource const& a, ChipResource const& b ) {
    return std::visit(
        []( auto const& one, auto const& other ) {
            using One = std::decay_t<decltype( one )>;
            if constexpr( !std::is_same_v<One, std::decay_t<decltype( other )>> )
                return false;
            else if constexpr( std::is_same_v<One, std::monostate> )
                return true;
            else
                return traitsOf( *one ) == traitsOf( *other );
        },
        a.record, b.record );
}

bool areInSameStages( ChipResource const& a, ChipResource const& b ) {
    return std::equal( a.stages.begin(), a.stages.end(), b.stages.begin(), b.stages.end(),
                       []( auto const& x, auto const& y ) { return x.stage == y.stage; } );
}

Marks marksOf( ChipResource const& now, ChipResource const& old ) {
    Marks marks;
    if( now.size != old.size )
        add( marks, now.size > old.size ? Mark::grew : Mark::shrank );
    if( !areInSameStages( now, old ) )
        add( marks, Mark::moved );
    if( now.name() != old.name() || now.type != old.type || now.ingress != old.ingress ||
        !haveSameTraits( now, old ) )
        add( marks, Mark::changed );
    return marks;
}

bool haveSameActions( ChipTable const& now, ChipTable const& old ) {
    auto const names = []( ChipTable const& table ) {
        std::multiset<std::string_view> all;
        for( BfActionInfo const* const action : table.actions )
            all.insert( action->name );
        return all;
    };
    return names( now ) == names( old );
}

Marks marksOf( ChipTable const& now, ChipTable const& old ) {
    Marks marks;
    if( now.record->size != old.record->size )
        add( marks, now.record->size > old.record->size ? Mark::grew : Mark::shrank );
    if( now.record->name != old.record->name || traitsOf( *now.record ) != traitsOf( *old.record ) ||
        !haveSameActions( now, old ) )
        add( marks, Mark::changed );
    return marks;
}

/// Pairs parts with the old ones by name, and marks what differs.
template<class Part>
void pairUp( std::span<Part> parts, std::span<Part const> olds, Renames const& renames ) {
    OldByName<Part> left( olds );
    for( Part& part : parts ) {
        auto const renamed = renames.find( part.name() );
        part.old = left.take( renamed == renames.end() ? part.name() : renamed->second );
        if( part.old )
            part.marks = marksOf( part, *part.old );
        else
            add( part.marks, Mark::added );
    }
}

void compareProgram( Chip& now, ChipProgram& program, Chip const& old, Renames const& renames ) {
    ChipProgram const* const before = program.old ? &old.programs[ *program.old ] : nullptr;
    std::span const resources =
        std::span( now.resources )
            .subspan( program.firstResource, program.endResource - program.firstResource );
    std::span const tables =
        std::span( now.tables ).subspan( program.firstTable, program.endTable - program.firstTable );
    pairUp( resources, before ? old.resourcesOf( *before ) : std::span<ChipResource const>(), renames );
    pairUp( tables, before ? old.tablesOf( *before ) : std::span<ChipTable const>(), renames );
    for( ChipResource const& resource : resources ) {
        for( StageEntries const& place : resource.old ? resource.old->stages : std::vector<StageEntries>() ) {
            if( !resource.isIn( place.stage ) )
                program.ghosts.push_back( { resource.old, place, &resource } );
        }
    }
    for( ChipTable& table : tables ) {
        if( table.resource ) {
            table.marks |= now.resources[ *table.resource ].marks;
            now.resources[ *table.resource ].marks |= table.marks;
        }
    }
}

/// The parts of the old chip that no part of the new chip corresponds to.
void addRemoved( Chip& now, Chip const& old ) {
    std::unordered_set<void const*> kept, gone;
    for( ChipResource const& resource : now.resources )
        kept.insert( resource.old );
    for( ChipTable const& table : now.tables )
        kept.insert( table.old );
    for( ChipResource const& resource : old.resources ) {
        if( kept.contains( &resource ) )
            continue;
        gone.insert( &resource );
        now.removed.push_back( &resource );
        for( ChipProgram& program : now.programs ) {
            for( StageEntries const& place : resource.stages ) {
                if( program.old == resource.program )
                    program.ghosts.push_back( { &resource, place, nullptr } );
            }
        }
    }
    for( ChipTable const& table : old.tables ) {
        if( !kept.contains( &table ) && !gone.contains( old.placeOf( table ) ) )
            now.removedTables.push_back( &table );
    }
}

} // namespace

void compare( Chip& now, Chip const& old, Renames const& renames ) {
    now.old = &old;
    for( ChipProgram& program : now.programs ) {
        program.old = oldProgramOf( program, now, old );
        compareProgram( now, program, old, renames );
    }
    addRemoved( now, old );
    std::vector<Stage> stages = now.stages;
    stages.insert( stages.end(), old.stages.begin(), old.stages.end() );
    now.stages = allStagesUpTo( std::move( stages ) );
}

} // namespace Bfri
