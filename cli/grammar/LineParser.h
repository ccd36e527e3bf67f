#pragma once

// The meaning of the words of a command line. Commands and completion use the same parser.

#include "cli/grammar/ParsedLine.h"

namespace Bfri {

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

    /// The whole line, including mistakes such as missing arguments and values of the wrong type.
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

} // namespace Bfri
