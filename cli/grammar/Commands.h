#pragma once

// The rows of the command table. The line's parser, completion, help and manual page all read them.

#include "cli/grammar/Failure.h"
#include "cli/grammar/Request.h"
#include "cli/terminal/TerminalStyle.h"
#include "inspect/model/Configuration.h"

#include <span>

namespace Bfri {

struct Answers;
struct RecordKind;

/// The kind of a value decides what the parser accepts, and what completion offers.
enum class ValueKind {
    text,       ///< anything
    number,     ///< digits
    choice,     ///< one of a few words
    file,       ///< a path; not empty
    command,    ///< a command's name
    table,      ///< the name or handle of a match table in the line's configuration
    name,       ///< the same of any record; with a record kind on the line, of that kind
    handle,     ///< a handle in the line's configuration
    recordKind, ///< "table", "tables"
    field,      ///< a field of the record kind on the line
    order,      ///< a field of the rows that the command lists; after a dash: descending
    condition,  ///< on the fields of these rows
    codes,      ///< codes or titles of findings, separated by commas
    codesOrAll, ///< the same, or "all"
    noticeCode, ///< the code or title of a notice of a difference, or "all"
};

struct ValueType {
    ValueKind kind = ValueKind::text;
    /// For messages: "a number of rows". Needed for numbers and files; choices name themselves.
    char const* description = "";
    std::span<char const* const> choices = {};
};

enum class Arity { once, onceOrMore, atMostOnce, anyTimes };

constexpr bool isOptional( Arity arity ) { return arity == Arity::atMostOnce || arity == Arity::anyTimes; }
constexpr bool isRepeatable( Arity arity ) { return arity == Arity::onceOrMore || arity == Arity::anyTimes; }

/// An argument of a command. Only the last one may be optional. One before others may be repeatable if the
/// next one is a record kind: any word that may be a path and is not a record kind repeats the argument.
struct Argument {
    char const* label; ///< "NAME"
    char const* description;
    ValueType type = {};
    Arity arity = Arity::once;
};

struct Option {
    char const* name;        ///< "--explain"
    char const* label;       ///< of its value: "CODES"; null for a flag
    char const* description; ///< for the help
    ValueType type = {};
    bool repeatable = false;        ///< several values are joined by commas
    char const* excludes = nullptr; ///< the name of an option that it can't be combined with
    char const* shortName = nullptr;
};

/// A command. It has one of show, run, and rows with print; or show for one configuration, and rows with
/// print for several.
struct Command {
    char const* word;
    char const* group; ///< its heading in the help; empty for commands that the help does not list
    std::span<Argument const> arguments;
    std::span<Option const> options = {}; ///< its own; optionsOf() has all
    bool json = false;                    ///< takes --json
    bool csv = false;                     ///< takes --csv
    bool abortsOnBadData = false;         ///< bad context data ends the process, as it would end an agent
    /// What a list command lists, with --filter, --where, --sort and -n; else null.
    RecordKind const* listing = nullptr;
    /// A row of those that --filter and --where choose from; of its values only the types count.
    Row ( *blank )() = nullptr;
    /// Answers from the configuration that the first argument names.
    ExitStatus ( *show )( Configuration const&, Request const&, Streams const& ) = nullptr;
    /// What a configuration adds to the answer of one or of several.
    std::vector<Row> ( *rows )( Configuration const&, Request const& ) = nullptr;
    /// Prints the rows of all.
    void ( *print )( Answers&&, Request const&, Streams const& ) = nullptr;
    /// Answers without a configuration, or loads its own.
    ExitStatus ( *run )( Request const&, Streams const& ) = nullptr;
};

/// A row of the help.
struct Explanation {
    char const* term;
    char const* meaning;
};

/// A program: the command table, and further texts of its help.
struct Program {
    char const* name;
    char const* version = "";
    char const* builtWith = "";   ///< printed below the version: choices of the build
    char const* title = "";       ///< for the manual page: "inspector of ..."
    char const* description = ""; ///< a sentence
    char const* usage = ""; ///< what the program's own help shows after its name: "COMMAND CONF [ARG...]"
    /// About the commands: lines of the form "command: what it does", and below each, indented, paragraphs
    /// with blank lines between them, and examples after a $.
    char const* texts = "";
    std::span<Explanation const> exitStatuses = {};
    std::span<Explanation const> environment = {}; ///< variables
    std::span<Command const> commands;             ///< in the order of the help
};

// The options that every command takes, and those of the program itself.
extern Option const helpOption;
extern Option const versionOption;
extern Option const jsonOption;

/// The command with that name; null if there is none.
Command const* findCommand( Program const& program, std::string_view word );

/// Every option of a command except --help, in the order of the help. Pointers into the table and to
/// constants.
std::vector<Option const*> optionsOf( Command const& command );

/// The arguments of a command as its usage shows them: " [CONF...]"; each label between the marks.
String argumentsOf( Command const& command, char const* before = "", char const* after = "" );

/// The names of the commands that the help lists.
std::vector<String> commandWords( Program const& program );

/// The names of the kinds of record, singular.
std::vector<String> kindWords();

/// A text of each element: a member, or what a function says of it.
std::vector<String> textsOf( auto const& elements, auto const& text ) {
    std::vector<String> texts;
    texts.reserve( std::size( elements ) );
    for( auto const& element : elements )
        texts.emplace_back( std::invoke( text, element ) );
    return texts;
}

/// "auto, always or never".
String alternatives( std::span<String const> words );

} // namespace Bfri
