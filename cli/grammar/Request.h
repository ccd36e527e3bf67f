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

    std::size_t confs = 1; ///< how many of the words, from the first on, are configurations

    bool has( String const& option ) const { return options.count( option ) > 0; }
    /// The value of an option; empty when it was not given.
    String option( String const& name ) const {
        auto const found = options.find( name );
        return found == options.end() ? String() : found->second;
    }
};

/// The selection that the options of a request ask for, of rows with the fields of a blank one. What is no
/// regular expression or condition is a Failure of status usage.
RowSelection selectionOf( Request const& request, Row const& blank );

/// The request of a line that has a command and no mistake. A --filter or --where that can't be understood is
/// a Failure of status usage.
Request requestOf( ParsedLine const& line );

} // namespace Bfri
