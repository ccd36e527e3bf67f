#include "inspect/check/CheckContext.h"

#include "inspect/model/Records.h"

namespace Bfri {

namespace {

/// Hands every reference of every placed table to `step`, by ascending handle of the table.
template<class Step>
void forEachReference( CheckContext const& facts, Step step ) {
    for( auto const* const entry : sortedByKey( facts.parser.resourceHandles() ) ) {
        for( ReferenceKind const& kind : referenceKinds ) {
            for( U32 const reference : ( entry->second.*kind.queue )() )
                step( entry->second, kind, reference );
        }
    }
}

String const& nameOf( CheckContext const& facts, U32 handle ) {
    static String const none;
    BfZelResource const* const resource = facts.parser.resourceHandles().find( handle );
    return resource ? resource->name : none;
}

/// Handles that some record has, or may have: for a direct meter or register without a stage, the model keeps
/// only the handle of its table, so an unknown handle in that table's list may be its own.
std::unordered_set<U32> knownHandles( CheckContext const& facts ) {
    std::unordered_set<U32> known;
    for( Attached const& record : facts.attached ) {
        known.insert( record.ownHandle );
        if( record.ownHandle || facts.placedNames.count( *record.name ) )
            continue;
        if( BfZelResource const* const table = facts.parser.resourceHandles().find( record.handle ) ) {
            for( U32 const handle : ( table->*referenceKinds[ record.referenceKind ].queue )() )
                known.insert( handle );
        }
    }
    return known;
}

std::vector<U32> const& referrersOf( CheckContext const& facts, U32 handle ) {
    static std::vector<U32> const none;
    auto const found = facts.referrers.find( handle );
    return found == facts.referrers.end() ? none : found->second;
}

constexpr std::size_t mostNames = 4;

String namesOf( CheckContext const& facts, std::vector<U32> const& handles ) {
    return firstFew( mostNames, handles, [ & ]( U32 handle ) { return quoted( nameOf( facts, handle ) ); } );
}

/// The parents of an indirect record: one, several, or none.
bool hasSeveralParents( CheckContext const& facts, Attached const& record ) {
    return facts.parser.multipleParentTablesHas( *record.name );
}

/// How the handles that list an indirect record disagree with the tables whose actions name it; empty when
/// they do not.
String disagreement( CheckContext const& facts, Attached const& record ) {
    auto const& listing = referrersOf( facts, record.ownHandle );
    String const* const parent = facts.parser.parentTable().find( *record.name );
    if( !parent )
        return listing.empty() || hasSeveralParents( facts, record )
                   ? ""
                   : namesOf( facts, listing ) + " lists its handle, but no action names it";
    if( listing.empty() )
        return "actions of " + quoted( *parent ) + " name it, but no table lists its handle";
    std::vector<U32> others;
    for( U32 const handle : listing ) {
        if( nameOf( facts, handle ) != *parent )
            others.push_back( handle );
    }
    return others.empty() ? ""
                          : namesOf( facts, others ) + " lists its handle, but only actions of " +
                                quoted( *parent ) + " name it";
}

/// Tables that would use a record if they were on the chip.
String unplacedReferrers( CheckContext const& facts, U32 handle ) {
    auto const found = facts.unplacedReferrers.find( handle );
    if( found == facts.unplacedReferrers.end() )
        return "";
    return "; listed by tables without a stage table: " +
           firstFew( mostNames, found->second, []( String const& name ) { return quoted( name ); } );
}

/// The handles of placed tables by name; none for a name that several have.
std::unordered_map<std::string_view, std::optional<U32>> handlesByName( CheckContext const& facts ) {
    std::unordered_map<std::string_view, std::optional<U32>> handles;
    for( BfResource const& resource : facts.parser.bfResources() ) {
        if( auto const [ place, isNew ] = handles.emplace( resource.name, resource.handle ); !isNew )
            place->second = std::nullopt;
    }
    return handles;
}

} // namespace

void findUnknownReferences( CheckContext const& facts, Findings& findings ) {
    auto const known = knownHandles( facts );
    forEachReference( facts, [ & ]( BfZelResource const& table, ReferenceKind const& kind, U32 reference ) {
        if( !facts.parser.resourceHandlesHas( reference ) && known.count( reference ) == 0 )
            findings.add( "table", table.name, table.handle,
                          String( "its \"" ) + kind.list + "\" hold " + hexText( reference ) +
                              ", the handle of nothing" );
    } );
}

void findReferencesOfWrongKind( CheckContext const& facts, Findings& findings ) {
    auto const examine = [ & ]( String const& name, U32 table, char const* list, U32 reference,
                                std::span<BfResourceType const> types ) {
        auto const found = facts.placed.find( reference );
        if( found == facts.placed.end() )
            return;
        auto const type = static_cast<BfResourceType>( found->second->type );
        if( std::ranges::find( types, type ) == types.end() )
            findings.add( "table", name, table,
                          String( "its \"" ) + list + "\" hold " + hexText( reference ) + ", which is " +
                              quoted( found->second->name ) + ", of another kind" );
    };
    forEachReference( facts, [ & ]( BfZelResource const& table, ReferenceKind const& kind, U32 reference ) {
        examine( table.name, table.handle, kind.list, reference, kind.types );
    } );
    constexpr BfResourceType actionData[] = { BfResourceType::actionData };
    constexpr BfResourceType selection[] = { BfResourceType::selection };
    for( BfTableInfo const& table : facts.parser.bfTables() ) {
        if( !table.adtName.empty() || table.adtHandle )
            examine( table.name, table.handle, "action_data_table_refs", table.adtHandle, actionData );
        if( !table.selName.empty() || table.selHandle )
            examine( table.name, table.handle, "selection_table_refs", table.selHandle, selection );
    }
}

void findReferencesOfWrongName( CheckContext const& facts, Findings& findings ) {
    auto const examine = [ & ]( BfTableInfo const& table, char const* list, U32 handle, String const& name ) {
        if( ( handle || !name.empty() ) && nameOf( facts, handle ) != name )
            findings.add( "match table", table.name, table.handle,
                          String( "its \"" ) + list + "\" call " + hexText( handle ) + " " + quoted( name ) +
                              ", which is " + quoted( nameOf( facts, handle ) ) );
    };
    for( BfTableInfo const& table : facts.parser.bfTables() ) {
        examine( table, "action_data_table_refs", table.adtHandle, table.adtName );
        examine( table, "selection_table_refs", table.selHandle, table.selName );
    }
}

void findSeveralParents( CheckContext const& facts, Findings& findings ) {
    for( Attached const& record : facts.attached ) {
        if( record.direct || !hasSeveralParents( facts, record ) )
            continue;
        auto const& listing = referrersOf( facts, record.ownHandle );
        findings.add( record.kind, *record.name, record.ownHandle,
                      "actions of several tables name it, so it belongs to none" +
                          ( listing.empty() ? "" : "; listed by " + namesOf( facts, listing ) ) );
    }
}

void findUnreferenced( CheckContext const& facts, Findings& findings ) {
    for( Attached const& record : facts.attached ) {
        if( !record.direct && referrersOf( facts, record.ownHandle ).empty() &&
            !facts.parser.parentTableHas( *record.name ) && !hasSeveralParents( facts, record ) )
            findings.add( record.kind, *record.name, record.ownHandle,
                          "no placed table lists its handle, and no action of one names it" +
                              unplacedReferrers( facts, record.ownHandle ) );
    }
}

void findDisagreeingLinks( CheckContext const& facts, Findings& findings ) {
    for( Attached const& record : facts.attached ) {
        if( record.direct )
            continue;
        if( String const text = disagreement( facts, record ); !text.empty() )
            findings.add( record.kind, *record.name, record.ownHandle, text );
    }
}

void findSharedDirect( CheckContext const& facts, Findings& findings ) {
    std::unordered_map<std::string_view, char const*> direct;
    for( Attached const& record : facts.attached ) {
        if( record.direct )
            direct.emplace( *record.name, record.kind );
    }
    for( BfResource const& resource : facts.parser.bfResources() ) {
        auto const found = direct.find( resource.name );
        auto const& listing = referrersOf( facts, resource.handle );
        if( found != direct.end() && listing.size() > 1 )
            findings.add( found->second, resource.name, resource.handle,
                          "is direct, but listed by several tables: " + namesOf( facts, listing ) );
    }
}

void findUnknownResourceNames( CheckContext const& facts, Findings& findings ) {
    std::unordered_set<std::string_view> known = facts.placedNames;
    for( Attached const& record : facts.attached )
        known.insert( *record.name );
    auto const handles = handlesByName( facts );
    for( auto const* const entry : sortedByKey( facts.parser.parentTable() ) ) {
        auto const table = handles.find( entry->second );
        if( known.count( entry->first ) == 0 )
            findings.add( "table", entry->second, table == handles.end() ? std::nullopt : table->second,
                          "its actions name " + quoted( entry->first ) +
                              " as a resource, but nothing has that name" );
    }
}

} // namespace Bfri
