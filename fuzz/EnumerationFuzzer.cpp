// A number and, after the character that ends it, a text: looked for among the values of every enumeration,
// and read as the string form of every value type.

#include "fuzz/Target.h"
#include "resourceinfo/BfResourceInfoIntf.h"
#include "resourceinfo/parser/context/Resources.h"
#include "zel/Assert.h"
#include "zel/Trace.h"
#include "zel/ValueType.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace BfResourceInfo {
namespace {

/// The result of a function; none if it throws that exception. Any other exception is a finding.
template<class Exception, class Function>
auto unlessThrown( Function function ) -> std::optional<decltype( function() )> {
    try {
        return function();
    } catch( Exception const& ) {
        return std::nullopt;
    }
}

/// Takes the decimal number at the front of a text, modulo 2^32, and the character after it.
U32 takeNumber( String& text ) {
    U32 number = 0;
    std::size_t i = 0;
    for( ; i < text.size() && text[ i ] >= '0' && text[ i ] <= '9'; ++i )
        number = number * 10 + static_cast<U32>( text[ i ] - '0' );
    text.erase( 0, i + 1 );
    return number;
}

/// The front of a text that can be a name.
std::string_view word( std::string_view text ) {
    constexpr std::string_view characters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
    return text.substr( 0, text.find_first_not_of( characters ) );
}

/// An enumeration E with the values up to `last`, by number and by name.
template<class E>
class Enumeration {
  public:
    using ByNumber = E ( * )( U32 );
    using ByName = E ( * )( String const& );

    Enumeration( E last, ByNumber byNumber, ByName byName ) : byNumber_( byNumber ), byName_( byName ) {
        for( U32 value = 0; value <= last; ++value )
            names_.push_back( stringValue( static_cast<E>( value ) ) );
    }

    void check( U32 number, String const& text ) const {
        checkNumber( number );
        checkText( static_cast<E>( number & 255U ) );
        checkName( text );
        checkReading( text );
        checkReading( names_[ number % names_.size() ] + text );
    }

  private:
    /// The number of a name; that of all values when it is none.
    std::size_t find( std::string_view name ) const {
        return static_cast<std::size_t>( std::find( names_.begin(), names_.end(), name ) - names_.begin() );
    }

    void checkNumber( U32 number ) const {
        auto const value = unlessThrown<std::out_of_range>( [ & ] { return byNumber_( number ); } );
        require( value.has_value() == ( number < names_.size() ), "number" );
        require( !value || ( *value == number && byName_( names_[ number ] ) == *value ), "way back" );
    }

    void checkText( E value ) const {
        String const text = value < names_.size() ? names_[ value ] : std::to_string( U32{ value } );
        std::ostringstream stream;
        stream << value;
        require( stringValue( value ) == text && valueToStrep( value ) == text && stream.str() == text,
                 "text of a value" );
    }

    void checkName( String const& name ) const {
        auto const value = unlessThrown<std::invalid_argument>( [ & ] { return byName_( name ); } );
        require( value.has_value() == ( find( name ) < names_.size() ), "name" );
        require( !value || *value == find( name ), "value of another name" );
    }

    void checkReading( String const& text ) const {
        constexpr std::size_t untouched = 77;
        auto value = static_cast<E>( untouched );
        std::string_view range = text;
        std::string_view const name = word( text );
        bool const there = find( name ) < names_.size();
        require( ( sequenceToValue( range, &value ) == Zel::Result::done ) == there, "reading" );
        require( range.size() == text.size() - ( there ? name.size() : 0 ), "what is left" );
        require( value == ( there ? find( name ) : untouched ), "what was read" );
    }

    ByNumber byNumber_;
    ByName byName_;
    std::vector<String> names_;
};

/// The string form of a value makes that value; any text makes one or is refused.
template<class Value>
void checkStringForm( Value const& value, char const* attribute, String const& text ) {
    String const form = valueToStrep( value );
    require( Value( form ) == value, "string form" );
    require( Value( "Value('T', ** {'" + String( attribute ) + "': " + form + "})" ) == value, "long form" );
    auto const made = unlessThrown<std::invalid_argument>( [ & ] { return Value( text ); } );
    require( !made || Value( valueToStrep( *made ) ) == *made, "string form of what was made" );
}

/// A quoted text holds no character that ends it, or a line, early.
void checkQuoted( String const& text ) {
    String const quoted = Zel::quotedStrep( text );
    require( quoted.size() >= text.size() + 2 && quoted.front() == '\'' && quoted.back() == '\'', "quotes" );
    for( std::size_t i = 1; i + 1 < quoted.size(); ++i ) {
        require( quoted[ i ] != '\'' && static_cast<unsigned char>( quoted[ i ] ) >= ' ', "not escaped" );
        i += quoted[ i ] == '\\';
    }
}

/// A text is that of one resource type or refused.
void checkTypeText( String const& text ) {
    auto const type = unlessThrown<Zel::AssertionError>( [ & ] { return stringToResourceType( text ); } );
    auto const told = [ & ]( auto const& row ) { return row.second == text; };
    auto const row = std::find_if( std::begin( bfResourceTypeTexts ), std::end( bfResourceTypeTexts ), told );
    require( type.has_value() == ( row != std::end( bfResourceTypeTexts ) ), "type" );
    require( !type || *type == row->first, "type of another text" );
}

} // namespace
} // namespace BfResourceInfo

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    using namespace BfResourceInfo;
    static auto const quiet = Zel::traceSinkIs( []( Zel::TraceLine const& ) {} );
    Zel::assertionHandlerIs( Zel::throwAssertionError );
    static Enumeration const resources( resourceStageStart, BfResourceFieldIdInstance,
                                        BfResourceFieldIdInstance );
    static Enumeration const tables( tableSelHandle, BfTableFieldIdInstance, BfTableFieldIdInstance );
    static Enumeration const strings( tableLogicalPipe, BfTableStringIdInstance, BfTableStringIdInstance );
    static Enumeration const counters( counterPackets, BfCounterFieldIdInstance, BfCounterFieldIdInstance );
    static Enumeration const meters( meterHasPreColor, BfMeterFieldIdInstance, BfMeterFieldIdInstance );
    static Enumeration const wreds( wredDirect, BfWredFieldIdInstance, BfWredFieldIdInstance );
    String text( reinterpret_cast<char const*>( data ), size );
    U32 const number = takeNumber( text );
    resources.check( number, text );
    tables.check( number, text );
    strings.check( number, text );
    counters.check( number, text );
    meters.check( number, text );
    wreds.check( number, text );
    checkTypeText( text );
    checkStringForm( BfPipeMask( number ), "value", text );
    checkStringForm( BfHeaderInfo( static_cast<U16>( number ) ), "size", text );
    checkQuoted( text );
    return 0;
}
