#pragma once

// Writes HTML and SVG. It can't write raw text: the names of elements and attributes are
// constants, the values of attributes that mean something to a browser are made of constants and numbers
// alone, and everything else is escaped.

#include "vessa/Types.h"

#include <fmt/format.h>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// A string constant of the program; nothing else converts to it.
class Literal {
  public:
    consteval Literal( char const* text ) : text_( text ) {}
    constexpr std::string_view view() const { return text_; }

  private:
    std::string_view text_;
};

/// The constant, or an empty one.
constexpr Literal when( bool condition, Literal text ) { return condition ? text : Literal( "" ); }

/// A text made of constants and numbers only, without a byte of any input.
class OwnText {
  public:
    OwnText( Literal text ) : text_( text.view() ) {}
    template<class... Parts>
    friend OwnText own( fmt::format_string<Parts...> format, Parts... parts );
    OwnText& operator+=( OwnText const& more ) { return text_ += more.text_, *this; }
    std::string_view view() const { return text_; }

  private:
    OwnText( String text, int ) : text_( std::move( text ) ) {}
    String text_;
};

template<class Part>
inline constexpr bool isOwnPart = std::is_arithmetic_v<Part>;
template<>
inline constexpr bool isOwnPart<Literal> = true;
template<>
inline constexpr bool isOwnPart<OwnText> = true;

/// Like fmt::format, for numbers, constants and other own texts.
template<class... Parts>
OwnText own( fmt::format_string<Parts...> format, Parts... parts ) {
    static_assert( ( isOwnPart<Parts> && ... ), "numbers and constants alone" );
    return OwnText( fmt::format( format, std::move( parts )... ), 0 );
}

struct Attribute {
    Attribute( Literal attribute, Literal constant ) : name( attribute ), value( constant.view() ) {}
    Attribute( Literal attribute, OwnText const& text ) : name( attribute ), value( text.view() ) {}

    Literal name;
    String value;
    bool isText = false;

  private:
    Attribute( Literal attribute, std::string_view text, bool is )
        : name( attribute ), value( text ), isText( is ) {}
    friend Attribute titled( std::string_view text );
    friend Attribute labelled( std::string_view text );
    friend Attribute ofPath( std::string_view text );
};

/// Attributes that may hold any text; a browser only shows it or hands it to the script.
Attribute titled( std::string_view text );   ///< title: the tool tip
Attribute labelled( std::string_view text ); ///< aria-label
Attribute ofPath( std::string_view text );   ///< data-p

using Attributes = std::vector<Attribute>;

class Html {
  public:
    enum class Syntax { html, xml };

    explicit Html( Syntax syntax = Syntax::html ) : syntax_( syntax ) {}

    /// Opens an element, until its `close`. End tags that HTML does not need are left out.
    Html& open( Literal tag, Attributes const& attributes = {} );
    Html& close();
    Html& text( std::string_view text );
    /// A place where a long text may be broken.
    Html& mayBreak();
    /// An element that contains a text.
    Html& leaf( Literal tag, Attributes const& attributes, std::string_view content );
    Html& leaf( Literal tag, std::string_view content ) { return leaf( tag, {}, content ); }
    /// An element that never has content: one of HTML's, or a shape of SVG.
    Html& empty( Literal tag, Attributes const& attributes = {} );
    Html& shape( Literal tag, Attributes const& attributes );

    /// Whole constants: "<!DOCTYPE html>", the style sheet and the script.
    Html& doctype();
    Html& styleSheet();
    Html& script();

    /// Everything written so far. Throws std::logic_error if an element is still open.
    String take() &&;

  private:
    void startTag( Literal tag, Attributes const& attributes );
    void attribute( Attribute const& attribute );

    Syntax const syntax_;
    String out_;
    std::vector<Literal> open_;
};

/// A text escaped for markup: characters with a meaning there as references; control characters, invisible
/// ones, and bytes that are not UTF-8 as \x07 or \u202e.
String escapedForHtml( std::string_view text );

/// The SHA-256 of the script in base64, for a Content-Security-Policy.
OwnText scriptHash();

} // namespace Bfri

template<>
struct fmt::formatter<Bfri::Literal> : fmt::formatter<std::string_view> {
    auto format( Bfri::Literal const& text, format_context& context ) const {
        return formatter<std::string_view>::format( text.view(), context );
    }
};
template<>
struct fmt::formatter<Bfri::OwnText> : fmt::formatter<std::string_view> {
    auto format( Bfri::OwnText const& text, format_context& context ) const {
        return formatter<std::string_view>::format( text.view(), context );
    }
};
