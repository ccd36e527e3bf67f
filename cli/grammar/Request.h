#pragma once

#include "cli/grammar/RowSelection.h"

#include <map>

namespace Bfri {

struct Command;
struct ParsedLine;

enum class Format { text, json, csv };

/// A command line without mistakes, ready for use.
struct Request {
    Command const* command = nullptr;
    std::vector<String> words =
        {}; ///< the arguments in order, starting with the configuration if there is one
    Format format = Format::text;
    RowSelection choice = {};
    std::map<String, String> options =
        {}; ///< by name; flags have no value, repeated values are joined by commas

    std::size_t confs = 1; ///< how many of the words, from the first on, are configurations

    bool has( String const& option ) const { return options.count( option ) > 0; }
    /// The value of an option; empty if it was not given.
    String option( String const& name ) const {
        auto const found = options.find( name );
        return found == options.end() ? String() : found->second;
    }
};

/// The selection that the options of a request ask for, among rows with the fields of a blank one. Throws
/// Failure with status usage for an invalid regular expression or condition.
RowSelection selectionOf( Request const& request, Row const& blank );

/// The request of a line with a command and without mistakes. Throws Failure with status usage if --filter or
/// --where can't be understood.
Request requestOf( ParsedLine const& line );

} // namespace Bfri
