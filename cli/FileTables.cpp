#include "cli/FileTables.h"

#include "resourceinfo/parser/context/MemberNames.h"

#include <algorithm>
#include <charconv>

namespace Bfri {

namespace {

std::optional<U32> numberOf( String const& word ) {
    U32 number = 0;
    auto const [ rest, error ] = std::from_chars( word.data(), word.data() + word.size(), number );
    bool const isWhole = error == std::errc() && rest == word.data() + word.size();
    return isWhole ? std::optional( number ) : std::nullopt;
}

std::size_t elements( ContextText& text ) {
    std::size_t count = 0;
    text.eachElement( [ & ] {
        text.skip();
        ++count;
    } );
    return count;
}

/// Those of the table itself, or of its match attributes, of all their units together.
std::size_t stageTables( ContextText& text ) {
    std::size_t count = 0;
    text.eachMember( [ & ]( String const& name ) {
        if( name == "stage_tables" )
            count += elements( text );
        else if( name == "units" )
            text.eachElement( [ & ] { count += stageTables( text ); } );
        else if( name == "match_attributes" )
            count += stageTables( text );
        else
            text.skip();
    } );
    return count;
}

/// The name and the handle of the object that comes.
FileName nameAndHandle( ContextText& text ) {
    FileName result;
    text.eachMember( [ & ]( String const& member ) {
        if( member == "name" )
            result.name = text.scalar();
        else if( member == "handle" )
            result.handle = numberOf( text.scalar() );
        else
            text.skip();
    } );
    return result;
}

void readReferences( ContextText& text, String const& list, FileTable& table ) {
    text.eachElement( [ & ] {
        if( auto const handle = nameAndHandle( text ).handle )
            table.references.push_back( { list, *handle } );
    } );
}

struct Word {
    std::string_view member;
    String FileTable::*text;
};

constexpr Word words[] = { { "table_type", &FileTable::type },
                           { "direction", &FileTable::direction },
                           { "how_referenced", &FileTable::howReferenced },
                           { "statistics_type", &FileTable::statisticsType } };

void readMember( ContextText& text, String const& member, Detail detail, FileTable& table ) {
    auto const word = std::find_if( std::begin( words ), std::end( words ),
                                    [ & ]( Word const& w ) { return w.member == member; } );
    if( word != std::end( words ) )
        table.*word->text = text.scalar();
    else if( member == "name" )
        table.name = text.scalar();
    else if( member == "handle" )
        table.handle = numberOf( text.scalar() );
    else if( member == "is_resource_controllable" )
        table.controllable = text.scalar() != "false";
    else if( member == "static_entries" )
        table.staticEntries = elements( text );
    else if( member.ends_with( "_table_refs" ) )
        readReferences( text, member, table );
    else if( member == "actions" && detail == Detail::full )
        text.eachElement( [ & ] { table.actions.push_back( nameAndHandle( text ) ); } );
    else if( member == "stage_tables" && detail == Detail::full )
        table.stageTables += elements( text );
    else if( member == "match_attributes" && detail == Detail::full )
        table.stageTables += stageTables( text );
    else
        text.skip();
}

} // namespace

bool SeenMembers::isRepeated( String const& name ) {
    std::string_view const kept = memberNameOf( name );
    if( kept.empty() )
        return false;
    bool const before = std::find( seen_.begin(), seen_.end(), kept.data() ) != seen_.end();
    if( !before )
        seen_.push_back( kept.data() );
    return before;
}

FileTable fileTable( ContextText& text, Detail detail ) {
    FileTable table;
    SeenMembers seen;
    text.eachMember( [ & ]( String const& member ) {
        if( seen.isRepeated( member ) ) {
            table.repeated.push_back( member );
            text.skip();
        } else
            readMember( text, member, detail, table );
    } );
    return table;
}

String FileTable::whyLeftOut() const {
    if( type != "match" )
        return "";
    String why;
    if( staticEntries > 0 )
        why = "it has " + std::to_string( staticEntries ) +
              ( staticEntries == 1 ? " static entry" : " static entries" );
    if( !controllable )
        why += String( why.empty() ? "" : ", and " ) + "its \"is_resource_controllable\" is false";
    return why;
}

} // namespace Bfri
