#include "inspect/budget/Rules.h"
#include "inspect/load/FileText.h"
#include "inspect/model/Names.h"
#include "inspect/rows/Utf8.h"

#include <algorithm>
#include <fmt/format.h>
#include <limits>
#include <toml++/toml.h>

namespace Bfri {

namespace {

/// Ends the reading of a file of rules.
struct MistakeFound {
    toml::source_position place;
    String problem;
};

[[noreturn]] void refuse( toml::source_region const& source, String problem ) {
    throw MistakeFound{ source.begin, std::move( problem ) };
}

/// The nearest of some words, or "expected a, b or c".
String instead( std::string_view word, std::vector<String> const& words ) {
    if( auto const near = nearest( words, word ); !near.empty() )
        return fmt::format( "did you mean {}?", quoted( near.front() ) );
    auto const last = words.end() - 1;
    return fmt::format( "expected {} or {}", fmt::join( words.begin(), last, ", " ), *last );
}

/// As it is written in the file: [chip], [[table]].
String headingOf( RuleKind kind ) {
    return kind == RuleKind::chip ? "[chip]" : fmt::format( "[[{}]]", wordOf( kind ) );
}

/// The index of a word among some; what is none of them is a mistake.
std::size_t indexOf( std::string_view word, std::vector<String> const& words, toml::source_region const& at,
                     char const* what ) {
    auto const found = std::ranges::find( words, word );
    if( found == words.end() )
        refuse( at, fmt::format( "unknown {}: {}", what, instead( word, words ) ) );
    return static_cast<std::size_t>( found - words.begin() );
}

/// The keys that a rule may have.
std::vector<String> keysOf( RuleKind kind ) {
    static std::vector<String> const own[] = { { "stages" },
                                               { "type", "direction", "stages", "entries", "tables" },
                                               { "name", "min", "max" },
                                               { "context_file", "stages" },
                                               { "name", "of", "max", "max_percent" } };
    auto keys = own[ static_cast<std::size_t>( kind ) ];
    keys.insert( keys.end(), { "level", "reason" } );
    return keys;
}

/// The members of one rule; an unknown one is a mistake.
class RuleReader {
  public:
    RuleReader( toml::table const& table, RuleKind kind ) : table_( table ), kind_( kind ) {
        auto const known = keysOf( kind );
        for( auto const& [ key, node ] : table_ ) {
            if( std::ranges::find( known, key.str() ) == known.end() )
                refuse( key.source(), fmt::format( "{} has no key {}; {}", headingOf( kind_ ),
                                                   quoted( key.str() ), instead( key.str(), known ) ) );
        }
    }

    Rule rule() {
        static std::vector<String> const levels = { "off", "warn", "error" };
        auto const level = static_cast<RuleLevel>( wordAmong( levels, "level" ) );
        String const reason = required( text( "reason" ), "reason" );
        auto const begin = table_.source().begin;
        return { kind_, level, reason, begin.line, begin.column };
    }
    std::optional<String> text( char const* key ) {
        toml::node const* const node = find( key );
        if( !node )
            return std::nullopt;
        auto const value = node->value_exact<std::string>();
        if( !value || value->empty() )
            refuse( node->source(), fmt::format( "{} takes a text in quotes, not an empty one", key ) );
        return String( *value );
    }
    std::optional<U32> number( char const* key ) {
        toml::node const* const node = find( key );
        return node ? std::optional( numberOf( *node, key ) ) : std::nullopt;
    }
    std::vector<Stage> numbers( char const* key ) {
        toml::node const* const node = find( key );
        std::vector<Stage> all;
        if( !node )
            return all;
        if( !node->is_array() || node->as_array()->empty() )
            refuse( node->source(), fmt::format( "{} takes a list of whole numbers: [ 0, 1 ]", key ) );
        for( toml::node const& element : *node->as_array() )
            all.push_back( numberOf( element, key ) );
        std::ranges::sort( all );
        return all;
    }
    std::size_t wordAmong( std::vector<String> const& words, char const* key ) {
        String const word = required( text( key ), key );
        return indexOf( word, words, find( key )->source(),
                        std::string_view( key ) == "of" ? "\"of\"" : key );
    }
    bool has( char const* key ) { return find( key ) != nullptr; }
    toml::source_region const& placeOf( char const* key ) { return find( key )->source(); }
    toml::source_region const& place() const { return table_.source(); }

    template<class Type>
    Type required( std::optional<Type> value, char const* key ) const {
        if( !value )
            refuse( table_.source(), fmt::format( "{} needs {}\"{}\"", headingOf( kind_ ),
                                                  std::string_view( key ) == "stages" ? "" : "a ", key ) );
        return std::move( *value );
    }
    /// Exactly one of two keys must be there.
    void requireOneOf( char const* one, char const* other ) {
        if( has( one ) == has( other ) )
            refuse( table_.source(),
                    fmt::format( "{} needs either \"{}\" or \"{}\"", headingOf( kind_ ), one, other ) );
    }

  private:
    static U32 numberOf( toml::node const& node, char const* key ) {
        auto const value = node.value_exact<std::int64_t>();
        if( !value || *value < 0 || *value > std::numeric_limits<U32>::max() )
            refuse( node.source(), fmt::format( "{} takes a whole number from 0 to {}", key,
                                                std::numeric_limits<U32>::max() ) );
        return static_cast<U32>( *value );
    }
    toml::node const* find( char const* key ) const { return table_.get( key ); }

    toml::table const& table_;
    RuleKind kind_;
};

void requireType( String const& type, toml::source_region const& place ) {
    std::vector<String> types;
    for( auto const& [ value, text ] : bfResourceTypeTexts )
        types.emplace_back( text );
    if( std::ranges::none_of( types, [ & ]( String const& one ) { return matches( type, one ); } ) )
        refuse( place, fmt::format( "unknown type of resource: {}", instead( type, types ) ) );
}

CapacityRule capacityOf( RuleReader& reader ) {
    String const type = reader.required( reader.text( "type" ), "type" );
    requireType( type, reader.placeOf( "type" ) );
    std::optional<bool> ingress;
    if( reader.has( "direction" ) )
        ingress = reader.wordAmong( { "egress", "ingress" }, "direction" ) == 1;
    reader.requireOneOf( "entries", "tables" );
    auto const entries = reader.number( "entries" );
    auto const tables = reader.number( "tables" );
    return { reader.rule(),
             type,
             ingress,
             reader.numbers( "stages" ),
             entries ? StageMeasure::entries : StageMeasure::tables,
             entries ? *entries : *tables };
}

SizeRule sizeOf( RuleReader& reader ) {
    SizeRule rule{ reader.rule(), reader.required( reader.text( "name" ), "name" ), reader.number( "min" ),
                   reader.number( "max" ) };
    if( !rule.least && !rule.most )
        refuse( reader.place(), "[[table]] needs \"min\" or \"max\"" );
    if( rule.least && rule.most && *rule.least > *rule.most )
        refuse( reader.placeOf( "min" ), "min is more than max" );
    return rule;
}

ProgramRule programOf( RuleReader& reader ) {
    return { reader.rule(), reader.text( "context_file" ).value_or( "" ),
             reader.required( reader.number( "stages" ), "stages" ) };
}

GrowthRule growthOf( RuleReader& reader ) {
    static std::vector<String> const measures = { "tables", "entries" };
    auto const of = reader.has( "of" ) ? static_cast<StageMeasure>( reader.wordAmong( measures, "of" ) )
                                       : StageMeasure::entries;
    reader.requireOneOf( "max", "max_percent" );
    return { reader.rule(), reader.text( "name" ).value_or( "" ), of, reader.number( "max" ),
             reader.number( "max_percent" ) };
}

/// Hands out each rule of a section: [[capacity]]; of a single one [chip].
template<class Rule, class Take>
void readSection( toml::node const& section, RuleKind kind, Rule ( *ruleOf )( RuleReader& ), Take take ) {
    auto const read = [ & ]( toml::table const& table ) {
        RuleReader reader( table, kind );
        take( ruleOf( reader ) );
    };
    bool const isOne = kind == RuleKind::chip;
    if( isOne && section.is_table() )
        return read( *section.as_table() );
    if( isOne || !section.is_array_of_tables() )
        refuse( section.source(),
                fmt::format( "write {}, once{}", headingOf( kind ), isOne ? "" : " a rule" ) );
    for( toml::node const& element : *section.as_array() )
        read( *element.as_table() );
}

template<class Rule>
void readSection( toml::node const& section, RuleKind kind, Rule ( *ruleOf )( RuleReader& ),
                  std::vector<Rule>& rules ) {
    readSection( section, kind, ruleOf, [ & ]( Rule rule ) { rules.push_back( std::move( rule ) ); } );
}

void readSection( toml::key const& key, toml::node const& section, Rules& rules ) {
    static std::vector<String> const words = { "chip", "capacity", "table", "program", "growth" };
    auto const kind = static_cast<RuleKind>( indexOf( key.str(), words, key.source(), "section" ) );
    switch( kind ) {
    case RuleKind::chip:
        return readSection( section, kind, programOf,
                            [ & ]( ProgramRule rule ) { rules.chip = std::move( rule ); } );
    case RuleKind::capacity:
        return readSection( section, kind, capacityOf, rules.capacities );
    case RuleKind::table:
        return readSection( section, kind, sizeOf, rules.sizes );
    case RuleKind::program:
        return readSection( section, kind, programOf, rules.programs );
    case RuleKind::growth:
        return readSection( section, kind, growthOf, rules.growths );
    }
}

/// A capacity in a stage that the chip does not have is no rule.
void requireStages( Rules const& rules ) {
    for( CapacityRule const& capacity : rules.capacities ) {
        if( rules.chip && !capacity.stages.empty() && capacity.stages.back() >= rules.chip->stages )
            throw MistakeFound{ { capacity.line, capacity.column },
                                fmt::format( "stage {} is none of the chip's {}", capacity.stages.back(),
                                             rules.chip->stages ) };
    }
}

} // namespace

std::variant<Rules, RulesMistake> readRules( String const& path ) {
    if( String const reason = whyUnreadable( path ); !reason.empty() )
        return RulesMistake{ path, 0, 0, "can't be read: " + reason };
    try {
        toml::table const file = toml::parse_file( std::string_view( path ) );
        Rules rules{ path };
        for( auto const& [ key, section ] : file )
            readSection( key, section, rules );
        if( file.empty() )
            throw MistakeFound{ { 1, 1 }, "there is no rule" };
        requireStages( rules );
        return rules;
    } catch( MistakeFound const& found ) {
        return RulesMistake{ path, found.place.line, found.place.column, found.problem };
    } catch( toml::parse_error const& error ) {
        auto const begin = error.source().begin;
        return RulesMistake{ path, begin.line, begin.column, String( error.description() ) };
    }
}

} // namespace Bfri
