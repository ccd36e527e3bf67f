#pragma once

// Words for completion that only the model of a configuration knows.

#include "cli/grammar/ParsedLine.h"

namespace Bfri {

/// A word that is being typed.
struct TypedWord {
    String kept; ///< the front of it, which every completion keeps
    String rest; ///< what is completed

    void keep( std::size_t size ) {
        kept += rest.substr( 0, size );
        rest.erase( 0, size );
    }
};

/// The names or handles in the configuration on the line that are values of a kind: table, name or handle.
/// Handles have the form of the typed word. In "ACTION of TABLE" the table is completed. None without a
/// configuration that can be loaded.
std::vector<String> modelWords( ParsedLine const& line, ValueKind kind, TypedWord& typed );

} // namespace Bfri
