#pragma once

// The answer of a command, before it is formatted: rows of named values.

#include "vessa/Types.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// A number that people read in hexadecimal and machines as a plain number: handles, pipe masks.
struct Hex {
    explicit Hex( U32 number ) : value( number ) {}
    bool operator<( Hex other ) const { return value < other.value; }
    U32 value;
};

/// As people read it: "0x01000001".
String hexText( U32 number );

template<class Type, class... Types>
concept OneOf = ( std::same_as<Type, Types> || ... );

struct Value;
struct Field;
using List = std::vector<Value>;
using Row = std::vector<Field>;

/// One value; default-constructed it is absent.
struct Value {
    Value() = default;
    Value( char const* text );
    template<OneOf<bool, U32, std::int64_t, Hex, String, List, Row> Type>
    Value( Type value ) : is( std::move( value ) ) {}

    std::variant<std::monostate, bool, U32, std::int64_t, Hex, String, List, Row> is;
};

/// A value with its name, which outlives it: a literal, or a text of the model.
struct Field {
    std::string_view name;
    Value value;
};

inline Value::Value( char const* text ) : is( String( text ) ) {}

/// An empty text is absent.
inline Value textOrNone( std::string_view text ) { return text.empty() ? Value() : Value( String( text ) ); }

/// Numbers by value, texts by their bytes, false first, lists by their first difference; absent values before
/// all others.
inline bool operator<( Value const& a, Value const& b );
inline bool operator<( Field const& a, Field const& b ) { return a.value < b.value; }
inline bool operator<( Value const& a, Value const& b ) { return a.is < b.is; }

/// The value of a row's field; absent if there is no such field.
inline Value const& valueOf( Row const& row, std::string_view name ) {
    static Value const absent;
    auto const found =
        std::find_if( row.begin(), row.end(), [ & ]( Field const& field ) { return field.name == name; } );
    return found == row.end() ? absent : found->value;
}

/// The same for a field that exists and always has the same type.
template<class Type>
Type const& valueAs( Row const& row, std::string_view name ) {
    return std::get<Type>( valueOf( row, name ).is );
}

/// The value, or an absent one.
template<class Type>
Value valueIf( std::optional<Type> const& value ) {
    return value ? Value( *value ) : Value();
}

/// Rows that all have the fields of the header; of its values, only the types count.
struct RowList {
    Row header;
    std::vector<Row> rows;
};

/// Any elements as a list of values.
template<class Elements, class ToValue = std::identity>
List listOf( Elements const& elements, ToValue const& toValue = {} ) {
    List list;
    list.reserve( std::size( elements ) );
    for( auto const& element : elements )
        list.push_back( toValue( element ) );
    return list;
}

} // namespace Bfri
