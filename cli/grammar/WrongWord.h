#pragma once

// What is said of a word of the command line that is none of those that could stand in its place.

#include "inspect/model/RecordKinds.h"

namespace Bfri {

/// The end of a sentence that quotes a wrong word: "; did you mean 'size'?", or nothing when no word is near.
String whatWasMeant( std::vector<String> const& words, std::string_view word );

/// "name, handle, size".
String joined( std::vector<String> const& words );

std::vector<String> fieldsOf( RecordKind const& listing );

/// The kind of a word, singular or plural; else a Failure of status usage.
RecordKind const& kindMeant( String const& word );

/// Unless it is a field of the kind, a Failure of status usage.
void requireField( RecordKind const& kind, String const& word );

} // namespace Bfri
