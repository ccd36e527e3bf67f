#pragma once

// The collections of a model, in one table.

#include "inspect/model/Kinds.h"
#include "inspect/rows/Row.h"
#include "resourceinfo/parser/BfResourceParser.h"

#include <optional>
#include <span>

namespace Bfri {

struct Collection {
    char const* member;       ///< its name in a JSON object
    char const* title;        ///< what it holds: "match tables"
    std::optional<Kind> kind; ///< of the records in it; nothing for the relations by name
    std::size_t ( *size )( BfResourceInfo::BfResourceParser const& parser );
    /// Everything in it: a list of records, or an object by name, in byte order of the names if the model
    /// keeps it in a hash map.
    Value ( *content )( BfResourceInfo::BfResourceParser const& parser );
};

/// Every collection, in the order of a dump.
std::span<Collection const> collections();

/// The only collection of a kind; for PHV fields the first of two.
Collection const& collectionOf( Kind kind );

/// The context files that are read: mask and numbers of their pipes, and path.
List pipelinesOf( BfResourceInfo::BfResourceParser const& parser );

} // namespace Bfri
