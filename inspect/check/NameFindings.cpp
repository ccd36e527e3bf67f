#include "inspect/check/CheckContext.h"

#include "inspect/model/Records.h"
#include "inspect/rows/Runs.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <set>
#include <tuple>
#include <unictype.h>
#include <uninorm.h>

namespace Bfri {

namespace {

/// A record by what must tell it from others.
struct NameUse {
    std::string_view scope; ///< within which the name counts; empty: everywhere
    String const* name;
    U32 handle;
};

/// Records with one name, or with one handle.
using Group = std::vector<NameUse>;

struct Repeats {
    std::vector<Group> withinAFile; ///< more records than there are files that may have them
    std::vector<Group> overFiles;   ///< others: of several pipelines, or so it seems
};

/// The records with one name and scope, in their order; those with the same pipe bits side by side.
Repeats repeatedNames( CheckContext const& facts, Group uses ) {
    auto const name = []( NameUse const& use ) {
        return std::tuple( std::string_view( *use.name ), use.scope );
    };
    auto const bits = [ & ]( NameUse const& use ) { return facts.pipeBits( use.handle ); };
    std::ranges::stable_sort(
        uses, {}, [ & ]( NameUse const& use ) { return std::tuple( name( use ), bits( use ) ); } );
    Repeats repeats;
    eachRun( uses, name, [ & ]( auto const& named ) {
        bool found = false;
        eachRun( named, bits, [ & ]( auto const& inFile ) {
            if( inFile.size() > 1 && inFile.size() > facts.filesWith( inFile.front().handle ) ) {
                repeats.withinAFile.emplace_back( inFile.begin(), inFile.end() );
                found = true;
            }
        } );
        if( !found && named.size() > 1 )
            repeats.overFiles.emplace_back( named.begin(), named.end() );
    } );
    return repeats;
}

/// The records with one handle and different names.
Repeats repeatedHandles( CheckContext const& facts, Group uses ) {
    auto const key = []( NameUse const& use ) {
        return std::tuple( use.handle, std::string_view( *use.name ) );
    };
    std::ranges::stable_sort( uses, {}, key );
    uses.erase( std::unique( uses.begin(), uses.end(),
                             [ & ]( NameUse const& a, NameUse const& b ) { return key( a ) == key( b ); } ),
                uses.end() );
    Repeats repeats;
    eachRun(
        uses, []( NameUse const& use ) { return use.handle; },
        [ & ]( auto const& group ) {
            bool const isInFile = group.size() > facts.filesWith( group.front().handle );
            if( group.size() > 1 )
                ( isInFile ? repeats.withinAFile : repeats.overFiles )
                    .emplace_back( group.begin(), group.end() );
        } );
    return repeats;
}

template<class Records>
void addAll( Group& uses, Records const& records ) {
    for( auto const& record : records )
        uses.push_back( { {}, &record.name, record.handle } );
}

Group matchTables( CheckContext const& facts ) {
    Group uses;
    addAll( uses, facts.parser.bfTables() );
    return uses;
}

/// Placed tables that are no match tables of the model.
Group otherTables( CheckContext const& facts ) {
    std::unordered_set<U32> matches;
    for( BfTableInfo const& record : facts.parser.bfTables() )
        matches.insert( record.handle );
    Group uses;
    addAll( uses, facts.parser.bfResources() );
    std::erase_if( uses, [ & ]( NameUse const& use ) { return matches.count( use.handle ) > 0; } );
    return uses;
}

Group actionsOfTables( CheckContext const& facts ) {
    Group uses;
    for( BfActionInfo const& record : facts.parser.bfActions() )
        uses.push_back( { record.tableName, &record.name, record.handle } );
    return uses;
}

/// Everything whose handle is a table's in the context file.
Group allTables( CheckContext const& facts ) {
    Group uses = matchTables( facts );
    addAll( uses, facts.parser.bfResources() );
    for( Attached const& record : facts.attached ) {
        if( record.ownHandle )
            uses.push_back( { {}, record.name, record.ownHandle } );
    }
    return uses;
}

String handlesOf( Group const& group ) {
    String const count = std::to_string( group.size() ) + " have this name, ";
    bool const oneHandle =
        std::ranges::all_of( group, [ & ]( NameUse const& b ) { return b.handle == group.front().handle; } );
    if( oneHandle )
        return count + ( group.size() == 2 ? "both" : "all" ) + " with the handle " +
               hexText( group.front().handle );
    return count + "with the handles " +
           firstFew( 8, group, []( NameUse const& b ) { return hexText( b.handle ); } );
}

String namesOf( Group const& group ) {
    return firstFew( 4, group, []( NameUse const& b ) { return quoted( *b.name ); } );
}

void addNames( CheckContext const& facts, Group uses, char const* what, Findings& findings ) {
    Repeats const repeats = repeatedNames( facts, std::move( uses ) );
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

/// Calls `step` with kind, name and handle of every record; for a table of several kinds, once for each.
template<class Step>
void forEachName( CheckContext const& facts, Step const& step ) {
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

// Names that nobody can tell apart by looking at them.

bool isInvisible( Character const& character ) {
    if( character.kind != Character::Kind::regular )
        return false;
    return isHidden( character ) || character.code < 0x20 || character.code == 0x7F ||
           uc_is_property_default_ignorable_code_point( character.code );
}

/// The normal form of what is seen of a name, and what is not seen.
struct Appearance {
    String seen;
    std::set<U32> unseen;
};

String normalForm( String const& text ) {
    std::size_t length = 0;
    auto* const composed = u8_normalize( UNINORM_NFC, reinterpret_cast<std::uint8_t const*>( text.data() ),
                                         text.size(), nullptr, &length );
    if( !composed ) // no valid UTF-8
        return text;
    String result( reinterpret_cast<char const*>( composed ), length );
    std::free( composed );
    return result;
}

Appearance appearanceOf( String const& name ) {
    Appearance result;
    std::string_view rest = name;
    while( !rest.empty() ) {
        Character const character = firstCharacter( rest );
        if( isInvisible( character ) )
            result.unseen.insert( character.code );
        else
            result.seen += rest.substr( 0, character.length );
        rest.remove_prefix( character.length );
    }
    result.seen = normalForm( result.seen );
    return result;
}

/// A name with the first record that has it.
struct Seen {
    String name;
    char const* what;
    std::optional<U32> handle;
    std::set<U32> unseen;
};

/// " (U+200B)" of what only one of both has.
String unseenText( Seen const& a, Seen const& b ) {
    std::set<U32> codes = a.unseen;
    codes.insert( b.unseen.begin(), b.unseen.end() );
    String text;
    for( U32 const code : codes )
        text += fmt::format( "{}U+{:04X}", text.empty() ? "" : " ", code );
    return text.empty() ? " in the normal form of its characters"
                        : " in characters that nobody sees (" + text + ")";
}

} // namespace

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
        if( mixed.count( group.front().scope ) == 0 )
            findings.add( "action", *group.front().name, {},
                          handlesOf( group ) + ", in table " + quoted( group.front().scope ),
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

void findLookAlikes( CheckContext const& facts, Findings& findings ) {
    std::map<String, std::vector<Seen>> byAppearance;
    std::unordered_set<std::string_view> names;
    forEachName( facts, [ & ]( char const* what, String const& name, std::optional<U32> handle ) {
        if( !names.insert( name ).second )
            return;
        Appearance appearance = appearanceOf( name );
        byAppearance[ appearance.seen ].push_back( { name, what, handle, std::move( appearance.unseen ) } );
    } );
    for( auto const& [ appearance, all ] : byAppearance ) {
        for( std::size_t i = 1; i < all.size(); ++i )
            findings.add( all[ i ].what, all[ i ].name, all[ i ].handle,
                          "differs from " + String( all.front().what ) + " " + quoted( all.front().name ) +
                              " only" + unseenText( all.front(), all[ i ] ) );
    }
}

} // namespace Bfri
