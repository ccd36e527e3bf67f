#pragma once

// The parts of JSON Schemas, so that the schemas of our answers read like lists of their keys.

#include "inspect/model/RecordKinds.h"
#include "inspect/rows/Row.h"

namespace Bfri::Schema {

/// A number from 0 on, a text or a flag, with its meaning.
Row number( char const* meaning );
Row integer( char const* meaning ); ///< may be below 0
Row text( char const* meaning );
Row flag( char const* meaning );
Row oneOf( char const* meaning, List words );

/// A schema, or null.
Row orNull( Row schema );

Row list( char const* meaning, Row element );

/// An object whose keys are names in the file.
Row byName( char const* meaning, Row value );

/// A key of an object, with its schema.
struct Key {
    std::string_view name;
    Row schema;
    bool isOptional = false;
};

/// An object with these keys. Later versions may add others.
Row object( std::vector<Key> keys, char const* meaning = "" );

/// One of several.
Row anyOf( List schemas );

/// The keys of a kind's rows, as its lists have them.
std::vector<Key> keysOf( RecordKind const& kind );

/// Two lists of keys in one.
std::vector<Key> joined( std::vector<Key> keys, std::vector<Key> const& more );

/// Where a context file is, and on which pipes.
Row contextFiles();

/// Tables that the model omits, and why.
Row omitted();

/// The configurations that failed.
Row failures();

/// What can't be loaded, and why.
Row fault( char const* meaning );

} // namespace Bfri::Schema
