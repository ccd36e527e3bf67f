#pragma once

// Names over all kinds of record: which kind bears which.

#include "inspect/model/RecordKinds.h"

namespace Bfri {

/// A name and a kind that bears it.
struct NameOfKind {
    String name;
    RecordKind const* kind;
};

/// Every name of the model with the kind that bears it, in the order of the recordKinds, each pair once.
std::vector<NameOfKind> namesOfKinds( BfResourceInfo::BfResourceParser const& parser );

/// The kind of a word, singular or plural ("table", "tables"); null for none.
RecordKind const* kindOf( std::string_view word );

} // namespace Bfri
