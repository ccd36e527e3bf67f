// What differs between two programs in values that the library does not read: from the survey's digests.

#include "inspect/diff/Programs.h"

#include <charconv>
#include <map>
#include <set>

namespace Bfri {

namespace {

using Context::PartDigest;
using Context::SurveyedElement;

constexpr std::string_view actions = "actions/";

/// An element of "actions" by the name of the action.
String pathOf( PartDigest const& part, SurveyedTable const* table ) {
    std::size_t index = 0;
    if( !table || !part.path.starts_with( actions ) )
        return part.path;
    char const* const end = part.path.data() + part.path.size();
    auto const read = std::from_chars( part.path.data() + actions.size(), end, index );
    return read.ec == std::errc() && read.ptr == end && index < table->actions.size()
               ? String( actions ) + table->actions[ index ].name
               : part.path;
}

/// A part of an element that differs; null where the element does not have it.
struct DifferingPart {
    PartDigest const* old = nullptr;
    PartDigest const* now = nullptr;

    bool differsInUnread() const { return old && now && old->unread != now->unread; }
    /// Whether no pass reads any of it.
    bool isUnread() const {
        PartDigest const& some = old ? *old : *now;
        return some.unread == some.digest;
    }
};

/// By path. Repeated paths have numbers.
using DifferingParts = std::map<String, DifferingPart>;

void addParts( DifferingParts& parts, PartDigest const* DifferingPart::*side,
               std::vector<PartDigest> const& digests, SurveyedTable const* table ) {
    for( PartDigest const& part : digests ) {
        String const path = pathOf( part, table );
        auto* place = &( parts[ path ].*side );
        for( int i = 2; *place; ++i )
            place = &( parts[ path + " (" + std::to_string( i ) + ')' ].*side );
        *place = &part;
    }
}

DifferingParts differingParts( std::vector<PartDigest> const& old, std::vector<PartDigest> const& now,
                               SurveyedTable const* oldTable = nullptr,
                               SurveyedTable const* newTable = nullptr ) {
    DifferingParts parts;
    addParts( parts, &DifferingPart::old, old, oldTable );
    addParts( parts, &DifferingPart::now, now, newTable );
    std::erase_if( parts, []( auto const& entry ) {
        DifferingPart const& part = entry.second;
        return part.old && part.now && part.old->digest == part.now->digest;
    } );
    return parts;
}

/// The members that differ and are not told of otherwise. What is new or gone is, with all that is in it, if
/// a pass reads any of it.
std::vector<String> unreadMembers( DifferingParts const& parts, auto const& isTold,
                                   auto const& isComparable ) {
    std::set<String> inParts; // members some part of which differs
    for( auto const& [ path, part ] : parts ) {
        if( path.find( '/' ) != path.npos )
            inParts.insert( path.substr( 0, path.find( '/' ) ) );
    }
    std::vector<String> members;
    for( auto const& [ path, part ] : parts ) {
        bool const isUnread =
            part.isUnread() || ( part.differsInUnread() && isComparable( path ) ) || !isTold( path );
        if( isUnread && inParts.count( path ) == 0 )
            members.push_back( path );
    }
    return members;
}

bool isInModel( SurveyedTable const& table ) { return table.resource || table.record; }

class UnreadTables {
  public:
    UnreadTables( ProgramPair const& pair, Unread& unread ) : pair_( pair ), unread_( unread ) {}

    void compare() {
        auto const& old = pair_.old->file()->tables;
        auto const& now = pair_.now->file()->tables;
        Join join{ {}, positionsOf( old ), positionsOf( now ) };
        join.match(
            [ & ]( std::size_t i ) { return RecordKey( pair_.tables.renames.of( old[ i ].name ), "" ); },
            [ & ]( std::size_t i ) { return RecordKey( now[ i ].name, "" ); } );
        std::vector<SurveyedTable const*> partners( old.size() );
        for( auto const& [ from, to ] : join.both )
            partners[ from ] = &now[ to ];
        for( std::size_t i = 0; i < old.size(); ++i ) {
            if( !partners[ i ] )
                add( old[ i ], UnreadTable::Is::removed );
            else if( old[ i ].digest != partners[ i ]->digest )
                compare( old[ i ], *partners[ i ] );
        }
        for( std::size_t const i : join.added )
            add( now[ i ], UnreadTable::Is::added );
    }

  private:
    /// The model's tables are told of anyway.
    void add( SurveyedTable const& table, UnreadTable::Is is ) {
        if( !isInModel( table ) )
            unread_.tables.push_back( { table.name, is, {}, pair_.pipes } );
    }
    void compare( SurveyedTable const& old, SurveyedTable const& now ) {
        auto const isComparable = [ & ]( std::string_view path ) {
            return ( path.find( "stage_tables" ) == path.npos && path.find( "units" ) == path.npos ) ||
                   old.stageTables.size() == now.stageTables.size();
        };
        bool const isTold = isTouched( old.name );
        auto const isExplained = [ & ]( std::string_view path ) { // actions name resources
            return isTold || ( path.starts_with( actions ) && !pair_.tables.renames.empty() );
        };
        auto members = unreadMembers( differingParts( old.digests, now.digests, &old, &now ), isExplained,
                                      isComparable );
        std::erase_if( members, [ & ]( String const& member ) {
            bool const isOmission = member == "static_entries" && old.isOmitted != now.isOmitted;
            return isOmission || refersToRenamed( old, member );
        } );
        if( !members.empty() )
            unread_.tables.push_back(
                { now.name, UnreadTable::Is::changed, std::move( members ), pair_.pipes } );
    }
    /// Whether a list of references differs since one of them is to a table with another name or number now,
    /// which is told there.
    bool refersToRenamed( SurveyedTable const& table, String const& member ) const {
        return std::ranges::any_of( table.references, [ & ]( auto const& reference ) {
            SurveyedTable const* const to = pair_.old->withHandle( reference.handle );
            return reference.list == member && to && isTouched( to->name );
        } );
    }
    bool isTouched( String const& name ) const { return pair_.tables.touched.count( name ) > 0; }

    ProgramPair const& pair_;
    Unread& unread_;
};

/// The records of kinds other than tables that are told of already.
struct ToldNames {
    NamesOfKinds const& touched;
    NamesOfKinds const& changed;

    bool isAnyTouched( Kind kind ) const { return touched.contains( kind ) && !touched.at( kind ).empty(); }
    static bool has( NamesOfKinds const& names, Kind kind, String const& name ) {
        return names.contains( kind ) && names.at( kind ).contains( name );
    }
};

/// Whether two lists of elements differ in what is not told: in an element of both, or in their order. Of
/// elements of one name the first counts.
template<class List>
bool differUnread( ToldNames const& told, Kind kind, List const& old, List const& now ) {
    std::map<std::string_view, std::pair<SurveyedElement const*, SurveyedElement const*>> named;
    for( auto element = old.rbegin(); element != old.rend(); ++element )
        named[ element->name ].first = &*element;
    for( auto element = now.rbegin(); element != now.rend(); ++element )
        named[ element->name ].second = &*element;
    for( auto const& [ name, elements ] : named ) {
        auto const [ from, to ] = elements;
        if( !from || !to || from->digest == to->digest )
            continue;
        bool const isTold = ToldNames::has( told.touched, kind, from->name );
        bool const isComparable = !ToldNames::has( told.changed, kind, from->name );
        if( !unreadMembers(
                 differingParts( from->digests, to->digests ), [ & ]( auto const& ) { return isTold; },
                 [ & ]( auto const& ) { return isComparable; } )
                 .empty() )
            return true;
    }
    return !told.isAnyTouched( kind );
}

/// Whether a member that differs does so in what is not told.
bool isUnread( std::string_view member, ProgramPair const& pair, ToldNames const& told ) {
    FileSurvey const& old = *pair.old->file();
    FileSurvey const& now = *pair.now->file();
    return member == "learn_quanta"
               ? differUnread( told, Kind::learnQuantas, old.learnQuantas, now.learnQuantas )
           : member == "flexible_headers" ? differUnread( told, Kind::headers, old.headers, now.headers )
           : member == "dynamic_hash_calculations"
               ? differUnread( told, Kind::hashes, old.hashes, now.hashes )
               : member != "phv_allocation" || !told.isAnyTouched( Kind::phvFields );
}

} // namespace

void addUnread( ProgramPair const& pair, NamesOfKinds const& touched, NamesOfKinds const& changed,
                Unread& unread ) {
    FileSurvey const* const from = pair.old->file();
    FileSurvey const* const to = pair.now->file();
    if( !from || !to || !from->digest || !to->digest || from->digest == to->digest )
        return;
    std::size_t const before = unread.tables.size();
    UnreadTables( pair, unread ).compare();
    bool const isAnyTable =
        pair.isAnyTableTold || !pair.tables.touched.empty() || unread.tables.size() > before;
    for( auto const& [ member, part ] : differingParts( from->digests, to->digests ) ) {
        if( member == "tables" ? !isAnyTable : isUnread( member, pair, { touched, changed } ) )
            unread.members.push_back( { member, pair.pipes } );
    }
}

} // namespace Bfri
