#pragma once

#include "vessa/Export.h"
#include "zel/Type.h"

#include <ostream>
#include <string_view>

namespace Zel {

/// Whether a reading function filled its target.
enum class Result : U8 { failed, done };

/// Byte enumerations by name and number. The identity names an enumeration of a registered module; its values
/// run from 0 without gaps. All are read-only and thread-safe; by name is a scan over the enumerators.
/// @{

/// The value with that number; throws std::out_of_range, naming number and enumeration, when there is none.
VESSA_EXPORT U8 enumInstance( TypeId type, U32 value );
/// The value with that name; throws std::invalid_argument, naming both, when there is none.
VESSA_EXPORT U8 enumInstance( TypeId type, String const& name );
/// The value's name, or its number in decimal when it has none.
VESSA_EXPORT String enumName( TypeId type, U8 value );
/// Reads an enumerator name (letters, digits, underscores) from the front of the range, fills the target and
/// moves the front past it. On failure nothing is changed.
VESSA_EXPORT Result enumRead( TypeId type, std::string_view& range, U8& target );

/// @}

} // namespace Zel

/// The six functions of a byte enumeration E: by number and by name (E##Instance), output of the name, string
/// form, reading from the front of a range, name. Misses are those of the functions above.
#define ZEL_BYTE_ENUM( EXPORT, E )                                                                           \
    EXPORT E E##Instance( ::Zel::U32 value );                                                                \
    EXPORT E E##Instance( ::Zel::String const& name );                                                       \
    EXPORT std::ostream& operator<<( std::ostream& os, E const& value );                                     \
    EXPORT ::Zel::String valueToStrep( E const& value );                                                     \
    EXPORT ::Zel::Result sequenceToValue( std::string_view& range, E* value );                               \
    EXPORT ::Zel::String stringValue( E value );

/// Their definitions, for the enumeration of the given identity.
#define ZEL_BYTE_ENUM_DEFINE( E, typeId )                                                                    \
    E E##Instance( ::Zel::U32 value ) { return static_cast<E>( ::Zel::enumInstance( typeId, value ) ); }     \
    E E##Instance( ::Zel::String const& name ) {                                                             \
        return static_cast<E>( ::Zel::enumInstance( typeId, name ) );                                        \
    }                                                                                                        \
    std::ostream& operator<<( std::ostream& os, E const& value ) { return os << stringValue( value ); }      \
    ::Zel::String valueToStrep( E const& value ) { return stringValue( value ); }                            \
    ::Zel::Result sequenceToValue( std::string_view& range, E* value ) {                                     \
        ::Zel::U8 number = 0;                                                                                \
        auto const result = ::Zel::enumRead( typeId, range, number );                                        \
        if( result == ::Zel::Result::done )                                                                  \
            *value = static_cast<E>( number );                                                               \
        return result;                                                                                       \
    }                                                                                                        \
    ::Zel::String stringValue( E value ) { return ::Zel::enumName( typeId, value ); }
