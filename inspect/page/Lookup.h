#pragma once

// Everything about a handle.

#include "inspect/model/HandleUses.h"
#include "inspect/model/Omissions.h"

#include <map>
#include <span>

namespace Bfri {

/// A handle that was asked for, and the records that have it.
struct HandleAnswer {
    U32 handle = 0;
    std::vector<HandleUse> uses = {};
    Omissions omitted = {};            ///< what has it in a context file, or belongs to a table that does
    std::map<U32, String> others = {}; ///< if unknown: handles that may be meant, each with a name
    std::optional<U32> without0x = {}; ///< if unknown: the known handle that the word is with 0x, if any
};

/// An answer for each word, which must be a handle (see handleIn), from one pass over the model. The texts
/// are the model's.
std::vector<HandleAnswer> lookUp( Configuration const& configuration, std::span<String const> words );

/// A row for each use of a handle: the fields of a CSV line.
std::vector<Row> rowsOf( std::vector<HandleAnswer> const& answers );
Row blankUse(); ///< of which only the types count

/// The JSON objects, in the order of the answers.
List objectsOf( std::vector<HandleAnswer> const& answers );

} // namespace Bfri
