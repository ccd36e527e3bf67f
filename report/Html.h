#pragma once

// Writes HTML and SVG from templates: `html.add( "<td class=n>{}", text )`. Templates are constants. A text
// may stand between tags, and in attributes that a browser only shows; there it is escaped. Elsewhere in a
// tag, only numbers and constants may stand. Code that puts anything else there does not compile.

#include "vessa/Types.h"

#include <algorithm>
#include <fmt/format.h>
#include <initializer_list>
#include <iterator>
#include <string_view>

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// A string constant of the program; nothing else converts to it.
class Literal {
  public:
    consteval Literal( char const* text ) : text_( text ) {}
    constexpr operator std::string_view() const { return text_; }
    constexpr bool operator==( Literal const& ) const = default;

  private:
    std::string_view text_;
};

/// The constant, or an empty one.
constexpr Literal when( bool condition, Literal text ) { return condition ? text : Literal( "" ); }

/// A text made of constants and numbers only, without a byte of any input.
class OwnText {
  public:
    OwnText() = default;
    OwnText( Literal text ) : text_( text ) {}
    template<class... Parts>
    friend OwnText own( fmt::format_string<Parts...> format, Parts... parts );
    OwnText& operator+=( OwnText const& more ) { return text_ += more.text_, *this; }
    operator std::string_view() const { return text_; }

  private:
    String text_;
};

template<class Part>
inline constexpr bool isOwnPart =
    std::is_arithmetic_v<Part> || std::is_same_v<Part, Literal> || std::is_same_v<Part, OwnText>;

/// Like fmt::format, for numbers, constants and other own texts.
template<class... Parts>
OwnText own( fmt::format_string<Parts...> format, Parts... parts ) {
    static_assert( ( isOwnPart<Parts> && ... ), "numbers and constants alone" );
    OwnText text;
    text.text_ = fmt::format( format, std::move( parts )... );
    return text;
}

/// A text escaped for markup: characters with a meaning there as references; control characters, invisible
/// ones, and bytes that are not UTF-8 as \x07 or \u202e.
String escapedForHtml( std::string_view text );

enum class PartIs { own, text, markup };

/// Whether every part of a template may stand where it does, and all tags are whole. A place may have the
/// number of its part: "{0}".
constexpr bool areWellPlaced( std::string_view text, std::initializer_list<PartIs> parts ) {
    std::size_t next = 0;
    bool inTag = false, inQuotes = false, isOnlyShown = false;
    for( std::size_t i = 0; i < text.size(); ++i ) {
        std::string_view const front = text.substr( 0, i );
        if( text[ i ] == '"' && inTag ) {
            inQuotes = !inQuotes;
            isOnlyShown = inQuotes && ( front.ends_with( " title=" ) || front.ends_with( " aria-label=" ) ||
                                        front.ends_with( " data-p=" ) );
        } else if( ( text[ i ] == '<' || text[ i ] == '>' ) && !inQuotes )
            inTag = text[ i ] == '<';
        else if( text[ i ] == '{' ) {
            bool const isNumbered = text[ i + 1 ] >= '0' && text[ i + 1 ] <= '9';
            std::size_t const number = isNumbered ? static_cast<std::size_t>( text[ i + 1 ] - '0' ) : next++;
            if( number >= parts.size() )
                return false;
            PartIs const part = parts.begin()[ number ];
            if( inTag && part != PartIs::own && !( isOnlyShown && part == PartIs::text ) )
                return false;
        }
    }
    return !inTag;
}

class Html {
  public:
    template<class... Parts>
    class Template;

    /// Adds the template with its parts: numbers and constants as they are, markup as it is, texts escaped.
    template<class... Parts>
    Html& add( Template<std::type_identity_t<Parts>...> text, Parts const&... parts ) {
        fmt::format_to( std::back_inserter( out_ ), text.format, written( parts )... );
        return *this;
    }
    Html& operator+=( Html const& more ) { return out_ += more.out_, *this; }
    String take() && { return std::move( out_ ); }

  private:
    template<class Part>
    static constexpr PartIs isPart = isOwnPart<Part>              ? PartIs::own
                                     : std::is_same_v<Part, Html> ? PartIs::markup
                                                                  : PartIs::text;
    template<class Part>
    static auto written( Part const& part ) {
        if constexpr( std::is_arithmetic_v<Part> )
            return part;
        else if constexpr( isPart<Part> == PartIs::own )
            return std::string_view( part );
        else if constexpr( isPart<Part> == PartIs::markup )
            return std::string_view( part.out_ );
        else
            return escapedForHtml( part );
    }

    String out_;
};

template<class... Parts>
class Html::Template {
  public:
    template<std::size_t size>
    consteval Template( char const ( &text )[ size ] ) : format( text ) {
        if( !areWellPlaced( text, { isPart<Parts>... } ) )
            throw "a part of the template must not stand where it does";
    }

    fmt::format_string<decltype( written( std::declval<Parts>() ) )...> format;
};

/// A piece of markup, by itself.
template<class... Parts>
Html markup( Html::Template<std::type_identity_t<Parts>...> text, Parts const&... parts ) {
    Html html;
    html.add( text, parts... );
    return html;
}

// The files that all pages share, which the build makes constants.
extern Literal const styleSheet;
extern Literal const script;
extern Literal const scriptHash; ///< SHA-256 in hexadecimal

/// The SHA-256 of the script in base64, for a Content-Security-Policy.
OwnText scriptHashInBase64();

} // namespace Bfri

template<class Text>
requires std::is_same_v<Text, Bfri::Literal> || std::is_same_v<Text, Bfri::OwnText>
struct fmt::formatter<Text> : fmt::formatter<std::string_view> {
    auto format( std::string_view text, format_context& context ) const {
        return formatter<std::string_view>::format( text, context );
    }
};
