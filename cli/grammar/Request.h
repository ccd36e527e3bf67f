#pragma once

#include "cli/grammar/Pattern.h"
#include "cli/grammar/Where.h"

#include <limits>
#include <map>

namespace Bfri {

struct Command;
struct ParsedLine;

/// By the field with this name: numbers by value, texts by their bytes, false first, absent values before
/// all.
struct Order {
    String field;
    bool descending = false;
};

/// Which rows of a list are wanted, and in which order; by default all in theirs.
struct RowSelection {
    std::optional<Pattern> filter = {}; ///< for the field "name"
    std::optional<Order> order = {};
    /// Rows that remain, after filter and condition.
    std::size_t most = std::numeric_limits<std::size_t>::max();
    Condition where = {}; ///< none if empty
};

/// Keeps the selected rows, in order. Rows that the order does not tell apart stay as they were.
void choose( std::vector<Row>& rows, RowSelection const& choice );

enum class Format { text, json, csv };

/// A command line without mistakes, ready for use.
struct Request {
    Command const* command = nullptr;
    std::vector<String> words =
        {}; ///< the arguments in order, starting with the configuration if there is one
    Format format = Format::text;
    RowSelection choice = {};
    std::map<String, String> options =
        {};                ///< by name; flags have no value, repeated values are joined by commas
    std::size_t confs = 1; ///< how many of the words, from the first on, are configurations

    bool has( String const& option ) const { return options.count( option ) > 0; }
    /// The value of an option; empty if it was not given.
    String option( String const& name ) const { return has( name ) ? options.at( name ) : String(); }
};

/// The request of a line with a command and without mistakes. Throws Failure with status usage if --filter or
/// --where can't be understood.
Request requestOf( ParsedLine const& line );

/// A row with a configuration in front, if there are several.
Row withConf( Row row, String const& conf, bool areSeveral = true );

} // namespace Bfri
