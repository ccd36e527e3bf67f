#include "inspect/diff/Renames.h"

#include <map>
#include <set>
#include <unordered_set>

namespace Bfri {

namespace {

using Context::Digest;
using Context::PartDigest;
using Context::SurveyedElement;

using Elements = std::vector<SurveyedElement const*>;

/// Elements whose names another list does not have.
Elements withoutNamesake( Elements const& all, Elements const& others ) {
    std::unordered_set<std::string_view> names;
    names.reserve( others.size() );
    for( SurveyedElement const* const one : others )
        names.insert( one->name );
    Elements alone;
    for( SurveyedElement const* const one : all ) {
        if( names.count( one->name ) == 0 )
            alone.push_back( one );
    }
    return alone;
}

template<class List>
Elements pointersTo( List const& list ) {
    Elements all;
    for( auto const& element : list )
        all.push_back( &element );
    return all;
}

SurveyedTable const& asTable( SurveyedElement const* element ) {
    return static_cast<SurveyedTable const&>( *element );
}

using Numbers = std::vector<std::int64_t>;

Numbers stagesOf( SurveyedTable const& table ) {
    Numbers stages;
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

bool areAlike( SurveyedTable const& a, SurveyedTable const& b ) {
    int const agreeing = ( a.handle == b.handle ) + ( a.size == b.size ) +
                         ( stagesOf( a ) == stagesOf( b ) ) + ( actionsOf( a ) == actionsOf( b ) );
    return a.type == b.type && agreeing >= 3;
}

Digest digestOf( SurveyedElement const& element, std::string_view path ) {
    for( PartDigest const& part : element.digests ) {
        if( part.path == path )
            return part.digest;
    }
    return {};
}

/// What tables with different handles must agree in.
auto contentOf( SurveyedTable const& table ) {
    Digest const keys = digestOf( table, "match_attributes/key_fields" );
    return std::tuple( table.type, table.direction, table.size, stagesOf( table ), actionsOf( table ),
                       keys.low, keys.high );
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

/// Whether the members of two elements, but for the name, are equal, or all but so many.
bool differInAtMost( std::size_t most, SurveyedElement const& a, SurveyedElement const& b ) {
    std::map<std::string_view, Digest> digests;
    for( PartDigest const& part : a.digests )
        digests[ part.path ] = part.digest;
    std::size_t differing = 0;
    for( PartDigest const& part : b.digests ) {
        auto const found = digests.find( part.path );
        differing += part.path != "name" && ( found == digests.end() || found->second != part.digest );
        if( found != digests.end() )
            digests.erase( found );
    }
    digests.erase( "name" );
    return differing + digests.size() <= most;
}

Renames renamedWithHandle( Elements const& all, Elements const& others, bool needsHandle ) {
    Renames renames;
    Elements old = withoutNamesake( all, others );
    Elements now = withoutNamesake( others, all );
    if( old.empty() || now.empty() )
        return renames;
    if( needsHandle )
        pairUp( old, now, renames, handleOf,
                []( auto const& a, auto const& b ) { return a.handle && differInAtMost( 1, a, b ); } );
    else
        pairUp(
            old, now, renames,
            []( SurveyedElement const& element ) {
                std::vector<std::tuple<String, std::uint64_t, std::uint64_t>> parts;
                for( PartDigest const& part : element.digests ) {
                    if( part.path != "name" )
                        parts.emplace_back( part.path, part.digest.low, part.digest.high );
                }
                std::sort( parts.begin(), parts.end() );
                return parts;
            },
            []( auto const& a, auto const& ) { return !a.digests.empty(); } );
    return renames;
}

/// The PHV bytes of a field, stage by stage.
using Places = std::vector<std::tuple<U32, bool, U32>>;

std::map<String, Places> placesOf( Configuration const& configuration ) {
    std::map<String, Places> places;
    for( FileSurvey const& file : configuration.files ) {
        for( Context::SurveyedPhvField const& field : file.phvFields )
            places[ field.name ].emplace_back( field.element, field.ingress, field.bytes );
    }
    return places;
}

std::map<Places, String const*> onlyIn( std::map<String, Places> const& all,
                                        std::map<String, Places> const& others ) {
    std::map<Places, String const*> unique;
    for( auto const& [ name, places ] : all ) {
        if( others.count( name ) > 0 )
            continue;
        auto const [ known, isNew ] = unique.try_emplace( places, &name );
        if( !isNew )
            known->second = nullptr;
    }
    return unique;
}

Renames renamedPhvFields( Configuration const& old, Configuration const& now ) {
    auto const olds = placesOf( old );
    auto const nows = placesOf( now );
    auto const added = onlyIn( nows, olds );
    Renames renames;
    for( auto const& [ places, name ] : onlyIn( olds, nows ) ) {
        auto const found = added.find( places );
        if( name && found != added.end() && found->second )
            renames.add( *name, *found->second );
    }
    return renames;
}

} // namespace

Renames renamedTables( P4Program const& old, P4Program const& now ) {
    Renames renames;
    Elements from = withoutNamesake( pointersTo( old.file()->tables ), pointersTo( now.file()->tables ) );
    Elements to = withoutNamesake( pointersTo( now.file()->tables ), pointersTo( old.file()->tables ) );
    if( from.empty() || to.empty() )
        return renames;
    auto const areTablesAlike = []( auto const& a, auto const& b ) {
        return areAlike( asTable( &a ), asTable( &b ) );
    };
    pairUp( from, to, renames, handleOf,
            [ & ]( auto const& a, auto const& b ) { return a.handle && areTablesAlike( a, b ); } );
    if( !from.empty() && !to.empty() )
        pairUp(
            from, to, renames, []( auto const& a ) { return contentOf( asTable( &a ) ); }, areTablesAlike );
    return renames;
}

Renames renamedLearnQuantas( FileSurvey const& old, FileSurvey const& now ) {
    return renamedWithHandle( pointersTo( old.learnQuantas ), pointersTo( now.learnQuantas ), true );
}

Renames renamedMerged( Kind kind, Configuration const& old, Configuration const& now ) {
    if( kind == Kind::phvFields )
        return renamedPhvFields( old, now );
    auto const elementsOf = [ kind ]( Configuration const& configuration ) {
        Elements all;
        for( FileSurvey const& file : configuration.files ) {
            Elements const some =
                kind == Kind::headers ? pointersTo( file.headers ) : pointersTo( file.hashes );
            all.insert( all.end(), some.begin(), some.end() );
        }
        return all;
    };
    return renamedWithHandle( elementsOf( old ), elementsOf( now ), kind == Kind::hashes );
}

} // namespace Bfri
