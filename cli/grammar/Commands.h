#pragma once

#include "cli/Failure.h"
#include "cli/commands/RowSelection.h"
#include "cli/terminal/Streams.h"
#include "inspect/model/Configuration.h"

#include <map>
#include <span>

namespace Bfri {

enum class Format { text, json, csv };

struct Command;
struct RecordKind;

/// A command line, understood.
struct Request {
    Command const* command = nullptr;
    std::vector<String> words; ///< the arguments in their order, the configuration first where there is one
    Format format = Format::text;
    RowSelection choice = {};
    std::map<String, String> options = {}; ///< those that were given; the value of a flag is empty

    bool has( String const& option ) const { return options.count( option ) > 0; }
    /// The value of an option; empty when it was not given.
    String option( String const& name ) const {
        auto const found = options.find( name );
        return found == options.end() ? String() : found->second;
    }
};

/// What a shell may offer in the place of a word.
enum class CompletionKind {
    nothing,
    command,
    file,
    table,
    name,
    handle,
    kind,
    field,
    order,
    codes,
    codesOrAll,
    severity,
    color
};

enum class Arity { once, onceOrMore, atMostOnce, anyTimes };

/// A word behind the command. Only the last one of a command may come several times.
struct Argument {
    char const* label; ///< "NAME"
    char const* description;
    CompletionKind offer = CompletionKind::nothing;
    Arity times = Arity::once;
};

/// An option of a command.
struct Option {
    char const* name;     ///< "--explain"
    char const* argument; ///< the label of its value; null for a flag
    char const* description;
    CompletionKind offer = CompletionKind::nothing;
    bool addsUp = false; ///< may come several times, as one with commas between the values
};

/// What a configuration's context files may do to a command that cannot use them.
enum class OnBadData { explain, dieAsLibrary };

/// A row of the command table, from which help, man page and completions come, too.
struct Command {
    char const* word;
    char const* group; ///< title in the help; empty for what serves shells and builds, not people
    char const* description;
    std::span<Argument const> arguments;
    std::span<Option const> options = {}; ///< its own, beside those that optionsOf adds
    bool json = false;
    bool csv = false;
    OnBadData onBadData = OnBadData::explain;
    RecordKind const* listing = nullptr; ///< what a list command lists, with a choice of rows; else null
    char const* details = "";            ///< what the help says behind the options, examples included
    /// Answers from the model of the configuration that is the first argument.
    ExitStatus ( *show )( Configuration const&, Request const&, Streams const& ) = nullptr;
    /// Answers without a model made for it; a command has either this or the other.
    ExitStatus ( *run )( Request const&, Streams const& ) = nullptr;
};

// What help and man page say of the whole program.
extern char const* const programDescription;
extern char const* const exitStatusText;
extern char const* const environmentText;

/// Every command, in the order of the help.
std::span<Command const> commands();

/// The command of a word; null when there is none.
Command const* commandOf( std::string_view word );

/// Every option of a command, those of formats, lists and terminals included.
std::vector<Option> optionsOf( Command const& command );

/// What stands behind the word of a command: " [CONF...]"; with marks around each label.
String argumentsOf( Command const& command, char const* before = "", char const* behind = "" );

/// What the help says of a command behind its options.
String detailsOf( Command const& command );

} // namespace Bfri
