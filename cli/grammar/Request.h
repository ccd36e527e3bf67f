#pragma once

#include "cli/grammar/RowSelection.h"

#include <map>

namespace Bfri {

struct Command;
struct ParsedLine;

enum class Format { text, json, csv };

/// What a command is asked for: a command line without mistakes, ready for use.
struct Request {
    Command const* command = nullptr;
    std::vector<String> words =
        {}; ///< the arguments in order, starting with the configuration where there is one
    Format format = Format::text;
    RowSelection choice = {};
    std::map<String, String> options = {}; ///< by name; a flag's value is empty, repeated values have commas

    bool has( String const& option ) const { return options.count( option ) > 0; }
    /// The value of an option; empty when it was not given.
    String option( String const& name ) const {
        auto const found = options.find( name );
        return found == options.end() ? String() : found->second;
    }
};

/// The request of a line that has a command and no mistake. A --filter that is no regular expression is a
/// Failure of status usage.
Request requestOf( ParsedLine const& line );

} // namespace Bfri
