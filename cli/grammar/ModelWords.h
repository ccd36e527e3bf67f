#pragma once

// Words for completion from the model of a configuration.

#include "cli/grammar/ParsedLine.h"

namespace Bfri {

/// A word that is being typed.
struct TypedWord {
    String kept; ///< its start, which every completion keeps
    String rest; ///< the part that is completed

    void keep( std::size_t size ) {
        kept += rest.substr( 0, size );
        rest.erase( 0, size );
    }
};

/// The names or handles in the line's configuration, for a value of kind table, name or handle. Handles have
/// the form of the typed word. In "ACTION of TABLE", the table is completed. None without a configuration
/// that can be loaded.
std::vector<String> modelWords( ParsedLine const& line, ValueKind kind, TypedWord& typed );

} // namespace Bfri
