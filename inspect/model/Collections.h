#pragma once

// The collections of a model, in one table.

#include "inspect/model/Kinds.h"
#include "inspect/rows/Row.h"
#include "resourceinfo/parser/BfResourceParser.h"

#include <optional>
#include <span>

namespace Bfri {

struct Collection {
    char const* member;       ///< of a JSON object
    char const* title;        ///< what it holds: "match tables"
    std::optional<Kind> kind; ///< the kind of record that shows it; nothing of the relations by name
    std::size_t ( *size )( BfResourceInfo::BfResourceParser const& parser );
    /// Everything in it: a list of records, or an object by name, sorted by the bytes of the names where
    /// hashes keep it.
    Value ( *content )( BfResourceInfo::BfResourceParser const& parser );
};

/// Every collection, in the order of a dump.
std::span<Collection const> collections();

/// The only collection of a kind; of PHV fields the first of two.
Collection const& collectionOf( Kind kind );

/// The context files that are read: mask of pipes, their numbers, path.
List pipelinesOf( BfResourceInfo::BfResourceParser const& parser );

} // namespace Bfri
