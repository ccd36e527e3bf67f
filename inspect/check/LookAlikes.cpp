// Names that nobody can tell apart by looking at them.

#include "inspect/check/CheckContext.h"

#include <fmt/format.h>
#include <map>
#include <set>
#include <unictype.h>
#include <uninorm.h>

namespace Bfri {

namespace {

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
