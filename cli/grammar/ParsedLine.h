#pragma once

// A command line as data: the meaning of each word, and mistakes.

#include "cli/grammar/Commands.h"

#include <optional>

namespace Bfri {

enum class Mistake {
    noCommand,          ///< the line is empty or has only options
    unknownCommand,     ///< text is not a command
    optionTooEarly,     ///< text comes before the command
    unknownOption,      ///< text is not an option of the command
    missingValue,       ///< of the option
    unexpectedValue,    ///< the option is a flag
    repeatedOption,     ///< the option may be given once
    conflictingOptions, ///< the option can't be combined with the other one, which comes first
    missingArgument,    ///< the line ends too early
    unexpectedArgument, ///< the command takes no further argument
    wrongValue,         ///< text is not of the type of the option or argument
};

/// A mistake in a line, and its place. Members that do not apply are null or empty.
struct UsageError {
    Mistake mistake;
    String text = {};
    Option const* option = nullptr;
    Option const* other = nullptr;
    Argument const* argument = nullptr;
    std::size_t position = 0; ///< of the word, from 0; if something is missing, the number of words
};

enum class Role {
    command,
    option,       ///< one option or several short ones, perhaps with the value of the last one
    optionValue,  ///< of the option in the previous word
    endOfOptions, ///< "--": arguments may start with a dash from here on
    argument,
    wrong, ///< none of these; the error says why, unless only the command is unknown
};

/// One word of a line, understood.
struct Word {
    String text;
    Role role;
    std::vector<Option const*> options = {}; ///< that the word sets, or whose value it is
    Argument const* argument = nullptr;
    std::optional<std::size_t> valueAt = {}; ///< where the value of the option or argument begins in the text
    std::optional<UsageError> error = {};    ///< of this word; its value is not checked

    /// The option or argument that the value is for.
    ValueType const& type() const { return argument ? argument->type : options.back()->type; }
    String value() const { return text.substr( *valueAt ); }
};

/// A command line, understood as far as possible.
struct ParsedLine {
    enum class Asked { answer, help, version };

    std::vector<Word> words;          ///< every word of the line
    Command const* command = nullptr; ///< null if the line names none
    Asked asked = Asked::answer;      ///< help means the command's, if there is one
    bool json = false;                ///< the line has --json, whether or not the rest is understood
    std::optional<UsageError> error;  ///< the first mistake; after --help there are none

    /// The first argument of a kind; null if there is none.
    Word const* argumentOf( ValueKind kind ) const;
    /// The kind of record that the line names; null if there is none.
    RecordKind const* recordKind() const;
};

} // namespace Bfri
