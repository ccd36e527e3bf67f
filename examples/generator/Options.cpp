#include "Options.h"

#include <charconv>
#include <system_error>

#include <CLI/CLI.hpp>

namespace bfgen {

namespace {

constexpr int usageError = 2;

/// Conversion alone would take -1, and whatever is too large, for the largest number.
CLI::Validator const wholeNumber(
    []( std::string& text ) {
        uint64_t number = 0;
        char const* const end = text.data() + text.size();
        auto const [ rest, error ] = std::from_chars( text.data(), end, number );
        return rest == end && error == std::errc() ? std::string() : text + " is not a number below 2^64";
    },
    "" );

CLI::Option* addOffSwitch( CLI::App& app, char const* name, bool& value, char const* text ) {
    auto const turnOff = [ &value ] { value = false; };
    return app.add_flag_callback( name, turnOff, text )->option_text( " " );
}

void addContentOptions( CLI::App& app, Options& options ) {
    CLI::Option* example =
        app.add_option( "--example", options.example, "Write a small hand-made switch, not an invented one" )
            ->check( CLI::IsMember( { "leaf" } ) )
            ->option_text( "leaf" );
    auto const add = [ & ]( char const* name, auto& value, char const* range, char const* text ) {
        return app.add_option( name, value, text )->option_text( range )->excludes( example );
    };
    add( "--seed", options.seed, "N (default 1)", "Equal seeds and options give equal files" )
        ->check( wholeNumber );
    add( "--pipelines", options.pipelines, "1..4 (default 1)",
         "Number of pipelines, each with a context file" )
        ->check( CLI::Range( 1, 4 ) );
    add( "--stages", options.stages, "12..20 (default 12)", "Stages of a pipeline" )
        ->check( CLI::Range( 12, 20 ) );
    add( "--tables", options.tables, "1..100000 (default 100)",
         "Length of each context file's list of tables" )
        ->check( CLI::Range( 1, 100000 ) );
    addOffSwitch( app, "--no-flexible-headers", options.flexibleHeaders, "Leave the flexible headers out" )
        ->excludes( example );
}

void addFormOptions( CLI::App& app, Options& options ) {
    app.add_option( "--bulk", options.bulkPercent,
                    "Percentage to write of what only a compiler cares for:\n"
                    "memory blocks, word layouts, action steps, parse states" )
        ->check( CLI::Range( 0, 1000 ) )
        ->option_text( "0..1000 (default 100, with --example 10)" );
    app.add_flag( "--gzip", options.gzip, "Compress the context files: pipe_a/context.json.gz and so on" );
    app.add_flag( "--compact", options.compact, "Write JSON without white space" );
    addOffSwitch( app, "--no-runtime-config", options.runtimeConfig,
                  "Leave out bfrt.json and its mention in switch.conf" );
}

} // namespace

std::optional<int> readOptions( int argc, char** argv, Options& options ) {
    CLI::App app(
        "Writes the configuration of a switch, OUT_DIR/switch.conf, with the context files that a P4 "
        "compiler would\nwrite for its pipelines: OUT_DIR/pipe_a/context.json to pipe_d/context.json." );
    app.name( "bfgen" );
    app.add_option( "OUT_DIR", options.folder, "Folder to write to, made if need be" )->required();
    addContentOptions( app, options );
    addFormOptions( app, options );
    app.footer( "--example goes with --bulk, --gzip, --compact and --no-runtime-config.\n"
                "Exit status: 0 done, 1 a file can't be written, 2 wrong usage." );
    try {
        app.parse( argc, argv );
    } catch( CLI::ParseError const& error ) {
        return app.exit( error ) == 0 ? 0 : usageError;
    }
    return std::nullopt;
}

} // namespace bfgen
