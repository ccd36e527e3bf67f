#include "inspect/check/CheckContext.h"

#include "inspect/model/Records.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace Bfri {

namespace {

/// A record by what must tell it from others.
struct HandleUse {
    String const* scope; ///< within which the name counts; null: everywhere
    String const* name;
    U32 handle;
};

/// Records with one name, or with one handle.
using Group = std::vector<HandleUse>;

struct Repeats {
    std::vector<Group> withinAFile; ///< more records than there are files that may have them
    std::vector<Group> overFiles;   ///< others: of several pipelines, or so it seems
};

std::string_view scopeOf( HandleUse const& bearer ) {
    return bearer.scope ? std::string_view( *bearer.scope ) : std::string_view();
}

/// The records with one name and scope, in their order; those with the same pipe bits side by side.
Repeats repeatedNames( CheckContext const& facts, std::vector<HandleUse> bearers ) {
    auto const name = []( HandleUse const& b ) {
        return std::tuple( std::string_view( *b.name ), scopeOf( b ) );
    };
    auto const bits = [ & ]( HandleUse const& b ) { return facts.pipeBits( b.handle ); };
    std::stable_sort( bearers.begin(), bearers.end(), [ & ]( HandleUse const& a, HandleUse const& b ) {
        return std::tuple( name( a ), bits( a ) ) < std::tuple( name( b ), bits( b ) );
    } );
    Repeats repeats;
    for( auto first = bearers.begin(); first != bearers.end(); ) {
        auto const end = std::find_if( first, bearers.end(),
                                       [ & ]( auto const& b ) { return name( b ) != name( *first ); } );
        bool found = false;
        for( auto from = first; from != end; ) {
            auto const to =
                std::find_if( from, end, [ & ]( auto const& b ) { return bits( b ) != bits( *from ); } );
            auto const count = static_cast<std::size_t>( to - from );
            if( count > 1 && count > facts.filesWith( from->handle ) ) {
                repeats.withinAFile.emplace_back( from, to );
                found = true;
            }
            from = to;
        }
        if( !found && end - first > 1 )
            repeats.overFiles.emplace_back( first, end );
        first = end;
    }
    return repeats;
}

/// The records with one handle and different names.
Repeats repeatedHandles( CheckContext const& facts, std::vector<HandleUse> bearers ) {
    auto const order = []( HandleUse const& b ) {
        return std::tuple( b.handle, std::string_view( *b.name ) );
    };
    std::stable_sort( bearers.begin(), bearers.end(),
                      [ & ]( HandleUse const& a, HandleUse const& b ) { return order( a ) < order( b ); } );
    bearers.erase(
        std::unique( bearers.begin(), bearers.end(),
                     [ & ]( HandleUse const& a, HandleUse const& b ) { return order( a ) == order( b ); } ),
        bearers.end() );
    Repeats repeats;
    for( auto first = bearers.begin(); first != bearers.end(); ) {
        auto const end = std::find_if( first, bearers.end(),
                                       [ & ]( auto const& b ) { return b.handle != first->handle; } );
        auto const count = static_cast<std::size_t>( end - first );
        if( count > 1 )
            ( count > facts.filesWith( first->handle ) ? repeats.withinAFile : repeats.overFiles )
                .emplace_back( first, end );
        first = end;
    }
    return repeats;
}

std::vector<HandleUse> matchTables( CheckContext const& facts ) {
    std::vector<HandleUse> bearers;
    for( BfTableInfo const& record : facts.parser.bfTables() )
        bearers.push_back( { nullptr, &record.name, record.handle } );
    return bearers;
}

/// Placed tables that are no match tables of the model.
std::vector<HandleUse> otherTables( CheckContext const& facts ) {
    std::unordered_set<U32> matches;
    for( BfTableInfo const& record : facts.parser.bfTables() )
        matches.insert( record.handle );
    std::vector<HandleUse> bearers;
    for( BfResource const& record : facts.parser.bfResources() ) {
        if( matches.count( record.handle ) == 0 )
            bearers.push_back( { nullptr, &record.name, record.handle } );
    }
    return bearers;
}

std::vector<HandleUse> actionsOfTables( CheckContext const& facts ) {
    std::vector<HandleUse> bearers;
    for( BfActionInfo const& record : facts.parser.bfActions() )
        bearers.push_back( { &record.tableName, &record.name, record.handle } );
    return bearers;
}

/// Everything whose handle is a table's in the context file.
std::vector<HandleUse> allTables( CheckContext const& facts ) {
    std::vector<HandleUse> bearers = matchTables( facts );
    for( BfResource const& record : facts.parser.bfResources() )
        bearers.push_back( { nullptr, &record.name, record.handle } );
    for( Attached const& record : facts.attached ) {
        if( record.ownHandle )
            bearers.push_back( { nullptr, record.name, record.ownHandle } );
    }
    return bearers;
}

String handlesOf( Group const& group ) {
    String const count = std::to_string( group.size() ) + " have this name, ";
    bool const oneHandle = std::all_of( group.begin(), group.end(), [ & ]( HandleUse const& b ) {
        return b.handle == group.front().handle;
    } );
    if( oneHandle )
        return count + ( group.size() == 2 ? "both" : "all" ) + " with the handle " +
               hexText( group.front().handle );
    return count + "with the handles " +
           firstFew( 8, group, []( HandleUse const& b ) { return hexText( b.handle ); } );
}

String namesOf( Group const& group ) {
    return firstFew( 4, group, []( HandleUse const& b ) { return quoted( *b.name ); } );
}

void addNames( CheckContext const& facts, std::vector<HandleUse> bearers, char const* what,
               Findings& findings ) {
    Repeats const repeats = repeatedNames( facts, std::move( bearers ) );
    for( Group const& group : repeats.withinAFile )
        findings.add( what, *group.front().name, {}, handlesOf( group ),
                      facts.contextFileOf( group.front().handle ) );
}

void addHandles( Repeats const& repeats, char const* what, Findings& findings ) {
    for( Group const& group : repeats.withinAFile )
        findings.add( what, *group.front().name, group.front().handle,
                      "it is the handle of " + std::to_string( group.size() ) + ": " + namesOf( group ) );
}

void addOverFiles( std::vector<Group> const& groups, char const* what, char const* of, Findings& findings ) {
    if( !groups.empty() )
        findings.add( what, *groups.front().front().name, groups.front().front().handle,
                      ( groups.size() == 1 ? String( "its " ) + of + " comes"
                                           : "its " + String( of ) + " and " +
                                                 std::to_string( groups.size() - 1 ) + " more come" ) +
                          " again in other pipelines" );
}

} // namespace

void forEachName( CheckContext const& facts,
                  std::function<void( char const*, String const&, std::optional<U32> )> const& step ) {
    for( BfTableInfo const& record : facts.parser.bfTables() )
        step( "match table", record.name, record.handle );
    for( Attached const& record : facts.attached )
        step( record.kind, *record.name, record.handle );
    for( BfResource const& record : facts.parser.bfResources() )
        step( "placed table", record.name, record.handle );
    for( BfActionInfo const& record : facts.parser.bfActions() )
        step( "action", record.name, record.handle );
    for( auto const& record : facts.parser.bfLearnQuantaInfos() )
        step( "learn quanta", record.name, record.handle );
    for( auto const* const entry : sortedByKey( facts.parser.bfDynamicHashInfo() ) )
        step( "hash", entry->first, entry->second.tableHdl );
    for( auto const* const entry : sortedByKey( facts.parser.bfHeaders() ) )
        step( "header", entry->first, std::nullopt );
    for( auto const& entry : facts.parser.ingressPhvContainers() )
        step( "PHV field", entry.key(), std::nullopt );
    for( auto const& entry : facts.parser.egressPhvContainers() )
        step( "PHV field", entry.key(), std::nullopt );
}

void findOddNames( CheckContext const& facts, Findings& findings ) {
    std::set<String> seen;
    forEachName( facts, [ & ]( char const* what, String const& name, std::optional<U32> handle ) {
        bool const odd = name.empty() || !isShowable( name );
        if( odd && seen.insert( name ).second )
            findings.add( what, name, handle,
                          name.empty() ? "its name is empty"
                                       : "its name has characters that can't be shown" );
    } );
}

void findDuplicateTableNames( CheckContext const& facts, Findings& findings ) {
    addNames( facts, matchTables( facts ), "match table", findings );
}

void findDuplicateResourceNames( CheckContext const& facts, Findings& findings ) {
    addNames( facts, otherTables( facts ), "placed table", findings );
}

void findDuplicateActions( CheckContext const& facts, Findings& findings ) {
    // If tables have the same name, the model does not say which of them an action belongs to.
    std::unordered_set<std::string_view> mixed;
    for( Group const& tables : repeatedNames( facts, matchTables( facts ) ).withinAFile )
        mixed.insert( *tables.front().name );
    for( Group const& group : repeatedNames( facts, actionsOfTables( facts ) ).withinAFile ) {
        if( mixed.count( *group.front().scope ) == 0 )
            findings.add( "action", *group.front().name, {},
                          handlesOf( group ) + ", in table " + quoted( *group.front().scope ),
                          facts.contextFileOf( group.front().handle ) );
    }
}

void findDuplicateTableHandles( CheckContext const& facts, Findings& findings ) {
    addHandles( repeatedHandles( facts, allTables( facts ) ), "table", findings );
}

void findDuplicateActionHandles( CheckContext const& facts, Findings& findings ) {
    addHandles( repeatedHandles( facts, actionsOfTables( facts ) ), "action", findings );
}

void findNamesInSeveralPipelines( CheckContext const& facts, Findings& findings ) {
    addOverFiles( repeatedNames( facts, matchTables( facts ) ).overFiles, "match table", "name", findings );
    addOverFiles( repeatedNames( facts, otherTables( facts ) ).overFiles, "placed table", "name", findings );
}

void findHandlesInSeveralPipelines( CheckContext const& facts, Findings& findings ) {
    addOverFiles( repeatedHandles( facts, allTables( facts ) ).overFiles, "table", "handle", findings );
    addOverFiles( repeatedHandles( facts, actionsOfTables( facts ) ).overFiles, "action", "handle",
                  findings );
}

} // namespace Bfri
