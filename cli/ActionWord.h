#pragma once

#include "vessa/Types.h"

#include <optional>
#include <vector>

namespace Bfri {

using Vessa::String;

/// An action and its table, as people name one of several that have the name: "permit of ipv4_acl".
struct ActionWord {
    String name;
    String table; ///< or the end of its name

    /// The one of the tables that is meant; a Failure of status no when none is.
    String tableMeant( std::vector<String> const& tables ) const;
};

/// Nothing for a word that names no table.
std::optional<ActionWord> actionWordOf( String const& word );

} // namespace Bfri
