#pragma once

// What a command answers, before it gets a format: rows of named values.

#include "vessa/Types.h"

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
    U32 value;
};

struct Value;
struct Field;
using List = std::vector<Value>;
using Row = std::vector<Field>;

/// One value; default-constructed it is absent.
struct Value {
    Value() = default;
    Value( bool flag );
    Value( U32 number );
    Value( Hex number );
    Value( char const* text );
    Value( String text );
    Value( List list );
    Value( Row row );

    std::variant<std::monostate, bool, U32, Hex, String, List, Row> is;
};

/// A value with its name, which outlives it: a literal, or a text of the model.
struct Field {
    std::string_view name;
    Value value;
};

inline Value::Value( bool flag ) : is( flag ) {}
inline Value::Value( U32 number ) : is( number ) {}
inline Value::Value( Hex number ) : is( number ) {}
inline Value::Value( char const* text ) : is( String( text ) ) {}
inline Value::Value( String text ) : is( std::move( text ) ) {}
inline Value::Value( List list ) : is( std::move( list ) ) {}
inline Value::Value( Row row ) : is( std::move( row ) ) {}

/// Rows that all have the fields of the header; its values mean nothing.
struct RowList {
    Row header;
    std::vector<Row> rows;
};

/// The rows of some records. The header is the row of a default-constructed one.
template<class Record, class Records, class ToRow>
RowList rowsOf( Records const& records, ToRow const& toRow ) {
    RowList list{ toRow( Record() ), {} };
    list.rows.reserve( records.size() );
    for( Record const& record : records )
        list.rows.push_back( toRow( record ) );
    return list;
}

/// Any elements as a list of values.
template<class Elements, class ToValue>
List listOf( Elements const& elements, ToValue const& toValue ) {
    List list;
    for( auto const& element : elements )
        list.push_back( toValue( element ) );
    return list;
}

} // namespace Bfri
