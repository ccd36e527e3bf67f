#pragma once

// A command line as data: what each word means, and what is wrong.

#include "cli/grammar/Commands.h"

#include <optional>

namespace Bfri {

enum class Mistake {
    noCommand,          ///< nothing but options on the line, or nothing at all
    unknownCommand,     ///< text is none
    optionTooEarly,     ///< text comes before the command
    unknownOption,      ///< text is none of the command's
    missingValue,       ///< of the option
    unexpectedValue,    ///< the option is a flag
    repeatedOption,     ///< the option takes one value
    conflictingOptions, ///< the option can't be combined with the other one, which comes first
    missingArgument,    ///< the line ends before it
    unexpectedArgument, ///< text is one more than the command takes
    wrongValue,         ///< text is not of the type of the option or argument
};

/// What is wrong with a line, and where. What does not apply is null or empty.
struct UsageError {
    Mistake mistake;
    String text = {};
    Option const* option = nullptr;
    Option const* other = nullptr;
    Argument const* argument = nullptr;
    std::size_t position = 0; ///< of the word, from 0; where something is missing, the number of words
};

enum class Role {
    command,
    option,       ///< one option or several short ones, perhaps with the value of the last one
    optionValue,  ///< of the option in the previous word
    endOfOptions, ///< "--": arguments may start with a dash from here on
    argument,
    wrong, ///< none of these; the error says why, unless the command is unknown
};

/// One word of a line, understood.
struct Word {
    String text;
    Role role;
    std::vector<Option const*> options = {}; ///< which the word gives, or whose value it is
    Argument const* argument = nullptr;
    std::optional<std::size_t> valueAt = {}; ///< where the value of the option or argument begins in the text
    std::optional<UsageError> error = {};    ///< that this word makes; its value is not looked at

    /// The option or argument that the value is for.
    ValueType const& type() const { return argument ? argument->type : options.back()->type; }
    String value() const { return text.substr( *valueAt ); }
};

/// A command line, understood as far as it can be.
struct ParsedLine {
    enum class Asked { answer, help, version };

    std::vector<Word> words;          ///< every word of the line
    Command const* command = nullptr; ///< null where the line names none
    Asked asked = Asked::answer;      ///< help is that of the command, if there is one
    bool json = false;                ///< the line has --json, whether or not the rest is understood
    std::optional<UsageError> error;  ///< the first mistake; none that comes after --help

    /// The first argument of a kind; null when there is none.
    Word const* argumentOf( ValueKind kind ) const;
    /// The kind of record that the line names; null without one.
    RecordKind const* recordKind() const;
};

} // namespace Bfri
