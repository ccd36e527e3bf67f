#include "inspect/diff/UnreadValues.h"

#include <charconv>
#include <set>

namespace Bfri {

namespace {

using Context::Digest;
using Context::PartDigest;
using Context::SurveyedElement;

/// The parts of an element, by path; elements of "actions" by the actions' names.
using Parts = std::map<String, PartDigest const*, std::less<>>;

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

/// Repeated ones have numbers.
void add( Parts& parts, String const& path, PartDigest const& part ) {
    String unique = path;
    for( int i = 2; !parts.try_emplace( unique, &part ).second; ++i )
        unique = path + " (" + std::to_string( i ) + ')';
}

Parts partsOf( SurveyedElement const& element, SurveyedTable const* table ) {
    Parts parts;
    for( PartDigest const& part : element.digests )
        add( parts, pathOf( part, table ), part );
    return parts;
}

/// The paths of both.
std::set<std::string_view> pathsOf( Parts const& a, Parts const& b ) {
    std::set<std::string_view> paths;
    for( Parts const* const parts : { &a, &b } ) {
        for( auto const& [ path, part ] : *parts )
            paths.insert( path );
    }
    return paths;
}

Digest const* find( Parts const& parts, std::string_view path, Digest PartDigest::*digest ) {
    auto const found = parts.find( path );
    return found == parts.end() ? nullptr : &( found->second->*digest );
}

bool differ( Parts const& a, Parts const& b, std::string_view path, Digest PartDigest::*digest ) {
    Digest const* const from = find( a, path, digest );
    Digest const* const to = find( b, path, digest );
    static Digest const nothing;
    return digest == &PartDigest::unread ? ( from ? *from : nothing ) != ( to ? *to : nothing )
                                         : !from || !to || *from != *to;
}

bool isInBoth( Parts const& a, Parts const& b, std::string_view path ) {
    return a.find( path ) != a.end() && b.find( path ) != b.end();
}

/// The members that differ and are not told of otherwise. What is new or gone is, with all that is in it, if
/// a pass reads any of it.
std::vector<String> differingMembers( Parts const& old, Parts const& now, auto const& isTold,
                                      auto const& isComparable ) {
    std::vector<String> members;
    std::set<String> inParts; // members some part of which differs
    for( std::string_view const path : pathsOf( old, now ) ) {
        if( differ( old, now, path, &PartDigest::digest ) && path.find( '/' ) != String::npos )
            inParts.insert( String( path.substr( 0, path.find( '/' ) ) ) );
    }
    for( std::string_view const path : pathsOf( old, now ) ) {
        if( !differ( old, now, path, &PartDigest::digest ) || inParts.count( String( path ) ) > 0 )
            continue;
        auto const& some = *( old.find( path ) == old.end() ? now : old ).find( path )->second;
        bool const isDropped = some.unread == some.digest;
        bool const isUnread = isDropped || ( isInBoth( old, now, path ) && isComparable( path ) &&
                                             differ( old, now, path, &PartDigest::unread ) );
        if( isUnread || !isTold( path ) )
            members.emplace_back( path );
    }
    return members;
}

/// Tables of one program that are not yet joined, by their new names.
using UnjoinedTables = std::unordered_map<std::string_view, std::vector<SurveyedTable const*>>;

bool isInModel( SurveyedTable const& table ) { return table.resource || table.record; }

class UnreadTables {
  public:
    UnreadTables( ToldDifferences const& told, Unread& unread ) : told_( told ), unread_( unread ) {}

    void compare() {
        for( SurveyedTable const& table : told_.programs.now.file()->tables )
            waiting_[ table.name ].push_back( &table );
        for( auto& [ name, tables ] : waiting_ )
            std::reverse( tables.begin(), tables.end() );
        for( SurveyedTable const& table : told_.programs.old.file()->tables )
            compare( table );
        for( SurveyedTable const& table : told_.programs.now.file()->tables ) {
            auto const& left = waiting_[ table.name ];
            bool const isNew = std::find( left.begin(), left.end(), &table ) != left.end();
            if( isNew && !isInModel( table ) )
                unread_.tables.push_back( { table.name, UnreadTable::Is::added, {}, told_.programs.pipes } );
        }
    }

  private:
    void compare( SurveyedTable const& old ) {
        auto const namesakes = waiting_.find( told_.programs.renames.of( old.name ) );
        if( namesakes == waiting_.end() || namesakes->second.empty() ) {
            if( !isInModel( old ) )
                unread_.tables.push_back( { old.name, UnreadTable::Is::removed, {}, told_.programs.pipes } );
            return;
        }
        SurveyedTable const& now = *namesakes->second.back();
        namesakes->second.pop_back();
        if( old.digest != now.digest )
            compare( old, now );
    }
    void compare( SurveyedTable const& old, SurveyedTable const& now ) {
        auto const isComparable = [ & ]( std::string_view path ) {
            return path.find( "stage_tables" ) == String::npos && path.find( "units" ) == String::npos
                       ? true
                       : old.stageTables.size() == now.stageTables.size();
        };
        bool const isTold = told_.programs.touched.count( old.name ) > 0;
        auto const isExplained = [ & ]( std::string_view path ) { // actions name resources
            return isTold || ( path.starts_with( actions ) && !told_.programs.renames.empty() );
        };
        auto members =
            differingMembers( partsOf( old, &old ), partsOf( now, &now ), isExplained, isComparable );
        std::erase_if( members, [ & ]( String const& member ) {
            bool const isOmission = member == "static_entries" && old.isOmitted != now.isOmitted;
            return isOmission || refersToRenamed( old, member );
        } );
        if( !members.empty() )
            unread_.tables.push_back(
                { now.name, UnreadTable::Is::changed, std::move( members ), told_.programs.pipes } );
    }
    /// Whether a list of references differs since one of them is to a table with another name or number now,
    /// which is told there.
    bool refersToRenamed( SurveyedTable const& table, String const& member ) const {
        return std::any_of( table.references.begin(), table.references.end(), [ & ]( auto const& reference ) {
            SurveyedTable const* const to = told_.programs.old.withHandle( reference.handle );
            return reference.list == member && to && told_.programs.touched.count( to->name ) > 0;
        } );
    }

    ToldDifferences const& told_;
    Unread& unread_;
    UnjoinedTables waiting_;
};

/// The elements of a list that is surveyed, by name; of several the first.
template<class List>
std::map<std::string_view, SurveyedElement const*> namedIn( List const& list ) {
    std::map<std::string_view, SurveyedElement const*> named;
    for( SurveyedElement const& element : list )
        named.try_emplace( element.name, &element );
    return named;
}

bool has( NamesOfKinds const& names, Kind kind, std::string_view name ) {
    auto const found = names.find( kind );
    return found != names.end() && found->second.count( String( name ) ) > 0;
}

/// Whether two lists of elements differ in what is not told: in an element of both, or in their order.
template<class List>
bool differUnread( ToldDifferences const& told, Kind kind, List const& old, List const& now ) {
    auto const olds = namedIn( old );
    auto const nows = namedIn( now );
    for( auto const& [ name, element ] : olds ) {
        auto const found = nows.find( name );
        if( found == nows.end() || element->digest == found->second->digest )
            continue;
        bool const isTold = has( told.touched, kind, name );
        bool const isComparable = !has( told.changed, kind, name );
        auto const members = differingMembers(
            partsOf( *element, nullptr ), partsOf( *found->second, nullptr ),
            [ & ]( auto ) { return isTold; }, [ & ]( auto ) { return isComparable; } );
        if( !members.empty() )
            return true;
    }
    return !told.touched.contains( kind ) || told.touched.at( kind ).empty();
}

/// A member of which the library reads something.
std::optional<bool> isListUnread( ToldDifferences const& told, std::string_view member ) {
    FileSurvey const& old = *told.programs.old.file();
    FileSurvey const& now = *told.programs.now.file();
    if( member == "learn_quanta" )
        return differUnread( told, Kind::learnQuantas, old.learnQuantas, now.learnQuantas );
    if( member == "flexible_headers" )
        return differUnread( told, Kind::headers, old.headers, now.headers );
    if( member == "dynamic_hash_calculations" )
        return differUnread( told, Kind::hashes, old.hashes, now.hashes );
    if( member == "phv_allocation" )
        return !told.touched.contains( Kind::phvFields ) || told.touched.at( Kind::phvFields ).empty();
    return std::nullopt;
}

Parts partsOf( FileSurvey const& file ) {
    Parts parts;
    for( PartDigest const& part : file.digests )
        add( parts, part.path, part );
    return parts;
}

} // namespace

void addUnread( ToldDifferences const& told, Unread& unread ) {
    ComparedPrograms const& programs = told.programs;
    bool const haveDigests = programs.old.file() && programs.now.file() && programs.old.file()->digest &&
                             programs.now.file()->digest;
    if( !haveDigests || programs.old.file()->digest == programs.now.file()->digest )
        return;
    std::size_t const before = unread.tables.size();
    UnreadTables( told, unread ).compare();
    bool const isAnyTable = told.isAnyTable || unread.tables.size() > before;
    Parts const old = partsOf( *programs.old.file() );
    Parts const now = partsOf( *programs.now.file() );
    for( std::string_view const member : pathsOf( old, now ) ) {
        if( !differ( old, now, member, &PartDigest::digest ) )
            continue;
        if( member == "tables" ? !isAnyTable : isListUnread( told, member ).value_or( true ) )
            unread.members.push_back( { String( member ), programs.pipes } );
    }
}

} // namespace Bfri
