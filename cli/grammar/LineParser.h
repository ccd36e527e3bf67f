#pragma once

// What the words of a command line mean. The one parser: commands run by it, and completion asks it.

#include "cli/grammar/ParsedLine.h"

namespace Bfri {

/// Takes the words of a line one by one. The program's table outlives parser and lines.
class LineParser {
  public:
    explicit LineParser( Program const& program );

    /// What a word would be as the next one. Its value is not looked at.
    Word meaningOf( String const& text ) const;

    void take( String const& text );

    /// Whether the next word may be an option.
    bool takesOptions() const { return !awaiting_ && !optionsEnded_ && !lost_; }

    bool takesCommand() const { return !line_.command && !lost_; }

    /// The options that may come next: those not given yet, unless they may be repeated.
    std::vector<Option const*> possibleOptions() const;

    /// What was taken so far; of mistakes, only those in one word.
    ParsedLine const& line() const { return line_; }

    /// The whole line: also what is missing, and values of the wrong type.
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
    std::vector<Option const*> known_;  ///< the options that the next word may give
    std::vector<Option const*> given_;  ///< so far
    Option const* awaiting_ = nullptr;  ///< the option whose value is the next word
    std::optional<UsageError> surplus_; ///< the first argument too many
    std::size_t arguments_ = 0;         ///< of the command that are taken so far
    bool optionsEnded_ = false;
    bool lost_ = false; ///< the command is unknown, so is all that follows
};

/// The words after the program's name.
ParsedLine parseLine( Program const& program, std::span<char const* const> words );

} // namespace Bfri
