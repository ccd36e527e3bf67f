// Which removed and added records are one record with a new name.

#include "inspect/diff/Programs.h"

#include <map>
#include <set>

namespace Bfri {

namespace {

using Context::Digest;
using Context::PartDigest;
using Context::SurveyedElement;

using Elements = std::vector<SurveyedElement const*>;

/// Elements whose names another list does not have.
Elements withoutNamesake( Elements const& all, Elements const& others ) {
    std::unordered_set<std::string_view> names;
    for( SurveyedElement const* const one : others )
        names.insert( one->name );
    Elements alone;
    std::ranges::copy_if( all, std::back_inserter( alone ),
                          [ & ]( auto const* one ) { return names.count( one->name ) == 0; } );
    return alone;
}

Elements withoutNamesake( P4Program const& program, P4Program const& other ) {
    Elements alone;
    for( SurveyedTable const& table : program.file()->tables ) {
        if( !other.named( table.name ) )
            alone.push_back( &table );
    }
    return alone;
}

template<class List>
void addAll( Elements& elements, List const& list ) {
    for( auto const& element : list )
        elements.push_back( &element );
}

/// Elements by a key; null if several have the same key.
template<class KeyOf>
auto uniqueBy( Elements const& elements, KeyOf keyOf ) {
    std::map<decltype( keyOf( *elements.front() ) ), SurveyedElement const*> unique;
    for( SurveyedElement const* const element : elements ) {
        auto const [ known, isNew ] = unique.try_emplace( keyOf( *element ), element );
        if( !isNew )
            known->second = nullptr;
    }
    return unique;
}

/// Pairs up the elements that alone have a key and are alike, and takes them out of the lists.
template<class KeyOf, class AreAlike>
void pairUp( Elements& old, Elements& now, Renames& renames, KeyOf keyOf, AreAlike alike ) {
    if( old.empty() || now.empty() )
        return;
    auto const olds = uniqueBy( old, keyOf );
    auto const nows = uniqueBy( now, keyOf );
    std::set<SurveyedElement const*> paired;
    for( auto const& [ key, from ] : olds ) {
        auto const to = nows.find( key );
        if( !from || to == nows.end() || !to->second || !alike( *from, *to->second ) )
            continue;
        renames.add( from->name, to->second->name );
        paired.insert( { from, to->second } );
    }
    for( Elements* const list : { &old, &now } )
        std::erase_if( *list, [ & ]( auto const* element ) { return paired.count( element ) > 0; } );
}

auto const handleOf = []( SurveyedElement const& element ) { return element.handle; };

SurveyedTable const& asTable( SurveyedElement const& element ) {
    return static_cast<SurveyedTable const&>( element );
}

std::vector<std::int64_t> stageNumbersOf( SurveyedTable const& table ) {
    std::vector<std::int64_t> stages;
    for( Context::SurveyedStageTable const& one : table.stageTables )
        stages.push_back( one.stage.value_or( -1 ) );
    return stages;
}

/// The names of the actions, or else what the record says.
std::vector<String> actionsOf( SurveyedTable const& table ) {
    std::vector<String> names{ table.howReferenced, table.statisticsType, table.isWred ? "red" : "" };
    for( Context::SurveyedAction const& action : table.actions )
        names.push_back( action.name );
    return names;
}

bool areTablesAlike( SurveyedElement const& one, SurveyedElement const& other ) {
    SurveyedTable const& a = asTable( one );
    SurveyedTable const& b = asTable( other );
    int const agreeing = ( a.handle == b.handle ) + ( a.size == b.size ) +
                         ( stageNumbersOf( a ) == stageNumbersOf( b ) ) +
                         ( actionsOf( a ) == actionsOf( b ) );
    return a.type == b.type && agreeing >= 3;
}

/// What tables with different handles must agree in.
auto contentOf( SurveyedElement const& element ) {
    SurveyedTable const& table = asTable( element );
    auto const keys = std::ranges::find( table.digests, "match_attributes/key_fields", &PartDigest::path );
    Digest const digest = keys == table.digests.end() ? Digest() : keys->digest;
    return std::tuple( table.type, table.direction, table.size, stageNumbersOf( table ), actionsOf( table ),
                       digest.low, digest.high );
}

/// The digests of an element's members except the name, in byte order.
auto membersOf( SurveyedElement const& element ) {
    std::vector<std::tuple<String, std::uint64_t, std::uint64_t>> parts;
    for( PartDigest const& part : element.digests ) {
        if( part.path != "name" )
            parts.emplace_back( part.path, part.digest.low, part.digest.high );
    }
    std::ranges::sort( parts );
    return parts;
}

/// Whether all members except the name are equal, or all but one.
bool differInAtMostOne( SurveyedElement const& a, SurveyedElement const& b ) {
    std::set<String> differing;
    std::vector<std::tuple<String, std::uint64_t, std::uint64_t>> parts;
    auto const from = membersOf( a );
    auto const to = membersOf( b );
    std::set_symmetric_difference( from.begin(), from.end(), to.begin(), to.end(),
                                   std::back_inserter( parts ) );
    for( auto const& part : parts )
        differing.insert( std::get<String>( part ) );
    return differing.size() <= 1;
}

/// A field, and its PHV bytes stage by stage.
struct PhvPlaces : SurveyedElement {
    std::vector<std::tuple<U32, bool, U32>> places = {};
};

std::map<String, PhvPlaces> placesOf( Configuration const& configuration ) {
    std::map<String, PhvPlaces> fields;
    for( FileSurvey const& file : configuration.files ) {
        for( Context::SurveyedPhvField const& field : file.phvFields ) {
            PhvPlaces& one = fields[ field.name ];
            one.name = field.name;
            one.places.emplace_back( field.element, field.ingress, field.bytes );
        }
    }
    return fields;
}

template<class KeyOf, class AreAlike>
Renames renamed( Elements const& all, Elements const& others, KeyOf keyOf, AreAlike alike ) {
    Renames renames;
    Elements old = withoutNamesake( all, others );
    Elements now = withoutNamesake( others, all );
    pairUp( old, now, renames, keyOf, alike );
    return renames;
}

bool areSameButForOne( SurveyedElement const& a, SurveyedElement const& b ) {
    return a.handle && differInAtMostOne( a, b );
}

bool haveDigests( SurveyedElement const& a, SurveyedElement const& ) { return !a.digests.empty(); }

Renames renamedPhvFields( Configuration const& old, Configuration const& now ) {
    auto const elementsOf = []( std::map<String, PhvPlaces> const& fields ) {
        Elements all;
        for( auto const& [ name, field ] : fields )
            all.push_back( &field );
        return all;
    };
    auto const olds = placesOf( old );
    auto const nows = placesOf( now );
    return renamed(
        elementsOf( olds ), elementsOf( nows ),
        []( SurveyedElement const& field ) { return static_cast<PhvPlaces const&>( field ).places; },
        []( auto const&... ) { return true; } );
}

} // namespace

Renames renamedTables( P4Program const& old, P4Program const& now ) {
    Renames renames;
    Elements from = withoutNamesake( old, now );
    Elements to = withoutNamesake( now, old );
    pairUp( from, to, renames, handleOf,
            []( auto const& a, auto const& b ) { return a.handle && areTablesAlike( a, b ); } );
    pairUp( from, to, renames, contentOf, areTablesAlike );
    return renames;
}

Renames renamedLearnQuantas( FileSurvey const& old, FileSurvey const& now ) {
    Elements from;
    Elements to;
    addAll( from, old.learnQuantas );
    addAll( to, now.learnQuantas );
    return renamed( from, to, handleOf, areSameButForOne );
}

Renames renamedMerged( Kind kind, Configuration const& old, Configuration const& now ) {
    if( kind == Kind::phvFields )
        return renamedPhvFields( old, now );
    auto const elementsOf = [ kind ]( Configuration const& configuration ) {
        Elements all;
        for( FileSurvey const& file : configuration.files )
            kind == Kind::headers ? addAll( all, file.headers ) : addAll( all, file.hashes );
        return all;
    };
    return kind == Kind::headers
               ? renamed( elementsOf( old ), elementsOf( now ), membersOf, haveDigests )
               : renamed( elementsOf( old ), elementsOf( now ), handleOf, areSameButForOne );
}

} // namespace Bfri
