#include "cli/grammar/Commands.h"

#include "inspect/model/RecordKinds.h"

#include <fmt/format.h>

namespace Bfri {

namespace {

constexpr char const* colorChoices[] = { "auto", "always", "never" };

// The options that rows of the table ask for by their other members.

constexpr Option filterOption = { "--filter", "REGEX",
                                  "Only rows whose name matches somewhere (ECMAScript syntax)" };
constexpr Option whereOption = { "--where",
                                 "EXPRESSION",
                                 "Only rows for which this holds: 'size<4096 and not name~=^l3'",
                                 { ValueKind::condition } };
constexpr Option sortOption = {
    "--sort", "FIELD", "Sort by a field; --sort=-FIELD sorts in descending order", { ValueKind::order } };
constexpr Option countOption = {
    "-n", "N", "Only the first N rows", { ValueKind::number, "a number of rows, 0 or more" } };
constexpr Option csvOption = {
    .name = "--csv", .label = nullptr, .description = "Print comma-separated values", .excludes = "--json" };
constexpr Option colorOption = { "--color",
                                 "WHEN",
                                 "auto (colours on a terminal, unless NO_COLOR is set), always or never",
                                 { ValueKind::choice, "", colorChoices } };

} // namespace

Option const helpOption = {
    .name = "--help", .label = nullptr, .description = "Print this help", .shortName = "-h" };
Option const versionOption = { "--version", nullptr, "Print the version" };
Option const jsonOption = { "--json", nullptr, "Print one JSON object" };

Command const* findCommand( Program const& program, std::string_view word ) {
    auto const found = std::ranges::find( program.commands, word, &Command::word );
    return found == program.commands.end() ? nullptr : &*found;
}

std::vector<Option const*> optionsOf( Command const& command ) {
    std::vector<Option const*> options;
    for( Option const& option : command.options )
        options.push_back( &option );
    if( command.listing )
        options.insert( options.end(), { &filterOption, &whereOption, &sortOption, &countOption } );
    if( command.json )
        options.push_back( &jsonOption );
    if( command.csv )
        options.push_back( &csvOption );
    options.push_back( &colorOption );
    return options;
}

String argumentsOf( Command const& command, char const* before, char const* after ) {
    String text;
    for( Argument const& argument : command.arguments ) {
        String const label = fmt::format( "{}{}{}{}", before, argument.label, after,
                                          isRepeatable( argument.arity ) ? "..." : "" );
        text += fmt::format( fmt::runtime( isOptional( argument.arity ) ? " [{}]" : " {}" ), label );
    }
    return text;
}

std::vector<String> commandWords( Program const& program ) {
    std::vector<String> words;
    for( Command const& command : program.commands ) {
        if( *command.group )
            words.emplace_back( command.word );
    }
    return words;
}

std::vector<String> kindWords() { return textsOf( recordKinds(), &RecordKind::one ); }

String alternatives( std::span<String const> words ) {
    return fmt::format( "{} or {}", fmt::join( words.first( words.size() - 1 ), ", " ), words.back() );
}

} // namespace Bfri
