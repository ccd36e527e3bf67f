#pragma once

// The meaning of the words of a command line. Commands and completion use the same parser.

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

    /// The arguments of a kind.
    std::vector<String> argumentsOf( ValueKind kind ) const;
    /// The kind of record that the line names; null if there is none.
    RecordKind const* recordKind() const;
    /// The fields that the line may name: of the kind of record on it, or of the rows that the command lists.
    std::vector<String> fields() const;
};

/// Takes the words of a line one by one. The program's table must outlive parser and lines.
class LineParser {
  public:
    explicit LineParser( Program const& program );

    /// The meaning of a word if it came next. Its value is not checked.
    Word meaningOf( String const& text ) const;

    void take( String const& text );

    /// Whether the next word may be an option.
    bool takesOptions() const { return !awaiting_ && !optionsEnded_ && !lost_; }

    bool takesCommand() const { return !line_.command && !lost_; }

    /// The options that may come next: those not given yet, unless they may be repeated.
    std::vector<Option const*> possibleOptions() const;

    /// The line so far; its only mistakes are those within one word.
    ParsedLine const& line() const { return line_; }

    /// The whole line, including mistakes such as missing arguments and values of the wrong type. Names and
    /// handles are not checked, as only the configuration knows them.
    ParsedLine finish() &&;

  private:
    Word beforeCommand( String const& text ) const;
    Word optionWord( String const& text ) const;
    Word longOption( String const& text ) const;
    Word shortOptions( String const& text ) const;
    Word argumentWord( String const& text ) const;
    Option const* optionNamed( std::string_view name ) const;
    void takeOptions( Word const& word );
    void takeError( UsageError error );
    std::optional<UsageError> arityError() const;
    std::optional<UsageError> wrongValue() const;

    Program const& program_;
    ParsedLine line_;
    std::vector<Option const*> known_;  ///< the options that the next word may be
    std::vector<Option const*> given_;  ///< so far
    Option const* awaiting_ = nullptr;  ///< the option whose value is the next word
    std::optional<UsageError> surplus_; ///< the first argument beyond those that the command takes
    std::size_t arguments_ = 0;         ///< of the command, taken so far
    bool optionsEnded_ = false;
    bool lost_ = false; ///< the command is unknown, and so is everything after it
};

/// The words after the program's name.
ParsedLine parseLine( Program const& program, std::span<char const* const> words );

/// The message for a line that has an error, with what may have been meant: "no command 'tabels'; did you
/// mean 'tables'?". Control characters are escaped.
String usageMessage( Program const& program, ParsedLine const& line );

} // namespace Bfri
