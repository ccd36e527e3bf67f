#include "inspect/budget/Budget.h"

#include "inspect/model/Names.h"
#include "inspect/rows/Utf8.h"

#include <algorithm>
#include <fmt/format.h>
#include <limits>
#include <set>
#include <span>

namespace Bfri {

namespace {

char const* wordOf( StageMeasure measure ) { return measure == StageMeasure::entries ? "entries" : "tables"; }

/// A table or other resource of a context file, placed or not, of the model or not.
struct NamedTable {
    String name;
    String what; ///< "match table", "stateful table"
    std::int64_t size;
    String contextFile;
};

std::vector<NamedTable> tablesOf( Configuration const& configuration ) {
    std::vector<NamedTable> tables;
    for( Context::FileSurvey const& file : configuration.files ) {
        for( Context::SurveyedTable const& table : file.tables ) {
            if( table.size && table.type != "condition" )
                tables.push_back( { table.name, table.type + " table", *table.size, file.path } );
        }
    }
    return tables;
}

/// The file of a path, of its end, or of a pattern.
bool isFile( String const& wanted, String const& path ) {
    return wanted.empty() || wanted == path || path.ends_with( "/" + wanted ) ||
           ( isPattern( wanted ) && matches( wanted, path ) );
}

class Judge {
  public:
    Judge( Rules const& rules, Configuration const& configuration, Configuration const* old )
        : rules_( rules ),
          maps_( stageMapsByProgram( configuration ) ),
          tables_( tablesOf( configuration ) ),
          hasOld_( old != nullptr ) {
        if( old )
            oldTables_ = tablesOf( *old );
    }

    Budget judge() {
        if( rules_.chip )
            each( std::span( &*rules_.chip, 1 ), &Judge::judgeProgram );
        each( std::span( rules_.capacities ), &Judge::judgeCapacity );
        each( std::span( rules_.sizes ), &Judge::judgeSize );
        each( std::span( rules_.programs ), &Judge::judgeProgram );
        each( std::span( rules_.growths ), &Judge::judgeGrowth );
        std::ranges::stable_sort( budget_.uses, isWorse );
        return std::move( budget_ );
    }

  private:
    template<class Rule>
    void each( std::span<Rule const> rules, void ( Judge::*judgeOne )( std::type_identity_t<Rule> const& ) ) {
        for( Rule const& rule : rules ) {
            if( rule.level != RuleLevel::off )
                ( this->*judgeOne )( rule );
        }
    }
    /// By used over available, which may be 0.
    static bool isWorse( Use const& a, Use const& b ) {
        auto const part = []( Use const& use ) {
            return use.available > 0 ? static_cast<double>( use.used ) / static_cast<double>( use.available )
                   : use.used > 0    ? std::numeric_limits<double>::infinity()
                                     : 0;
        };
        return part( a ) > part( b );
    }
    void fail( Rule const& rule, String problem ) {
        budget_.problems.push_back( { &rule, RuleLevel::error, std::move( problem ) } );
    }

    /// The stages from 0 up to the last one that is used.
    void judgeProgram( ProgramRule const& rule ) {
        bool any = false;
        for( StageMap const& map : maps_ ) {
            String const& file = map.files.front()->value();
            if( !isFile( rule.contextFile, file ) )
                continue;
            any = true;
            Stage const used = map.stages.empty() ? 0 : map.stages.back() + 1;
            budget_.uses.push_back(
                { &rule, "stages", file, {}, static_cast<std::int64_t>( used ), rule.stages } );
        }
        if( !any )
            fail( rule, rule.kind == RuleKind::chip
                            ? "matches nothing: there is no context file"
                            : "matches nothing: no context file is " + quoted( rule.contextFile ) );
    }
    void judgeCapacity( CapacityRule const& rule ) {
        bool any = rules_.chip.has_value() && !maps_.empty(); // its stages are known, taken or not
        for( StageMap const& map : maps_ ) {
            for( std::size_t i = 0; i < map.stages.size(); ++i ) {
                if( !rule.isFor( map.stages[ i ] ) )
                    continue;
                any = true;
                if( Use const use = useOf( rule, map, i ); use.used > 0 || use.unstated > 0 )
                    budget_.uses.push_back( use );
            }
        }
        if( !any )
            fail( rule, "matches nothing: no program has these stages" );
    }
    /// The names that a rule means; a problem where there is none, or where it is the end of several.
    std::vector<String> namesFor( Rule const& rule, String const& name,
                                  std::vector<NamedTable> const& tables ) {
        std::set<String> unique;
        for( NamedTable const& table : tables )
            unique.insert( table.name );
        std::vector<String> all( unique.begin(), unique.end() );
        if( isPattern( name ) ) {
            std::erase_if( all, [ & ]( String const& one ) { return !matches( name, one ); } );
            if( all.empty() )
                fail( rule, "matches nothing: no resource's name is like " + quoted( name ) );
            return all;
        }
        auto meant = namesMeant( all, name );
        if( meant.size() == 1 )
            return meant;
        auto const near = nearest( all, name );
        fail( rule, !meant.empty() ? quoted( name ) + " is the end of several names: " +
                                         fmt::format( "{}", fmt::join( meant, ", " ) )
                    : near.empty()
                        ? "matches nothing: no resource is called " + quoted( name )
                        : fmt::format( "matches nothing: no resource is called {}; names like it: {}",
                                       quoted( name ), fmt::join( near, ", " ) ) );
        return {};
    }
    void judgeSize( SizeRule const& rule ) {
        auto const names = namesFor( rule, rule.name, tables_ );
        for( NamedTable const& table : tables_ ) {
            if( !std::ranges::binary_search( names, table.name ) )
                continue;
            auto const add = [ & ]( char const* of, std::int64_t used, std::int64_t available ) {
                budget_.uses.push_back( { &rule,
                                          of + table.what + " " + quoted( table.name ),
                                          table.contextFile,
                                          {},
                                          used,
                                          available } );
            };
            if( rule.most )
                add( "size of ", table.size, *rule.most );
            if( rule.least )
                add( "least size of ", *rule.least, table.size );
        }
    }
    void judgeGrowth( GrowthRule const& rule ) {
        if( !hasOld_ ) {
            ++budget_.notJudged;
            budget_.problems.push_back(
                { &rule, rule.level, "not judged: growth needs an older configuration" } );
            return;
        }
        auto const add = [ & ]( String const& what, auto const& isMeant ) {
            std::int64_t const old = amountIn( oldTables_, rule.of, isMeant );
            std::int64_t const now = amountIn( tables_, rule.of, isMeant );
            std::int64_t const available = rule.most ? *rule.most : old * *rule.percent / 100;
            budget_.uses.push_back( { &rule, "growth of " + what, {}, {}, now - old, available } );
        };
        bool const isNumber = rule.of == StageMeasure::tables;
        if( rule.name.empty() )
            return add( isNumber ? "resources" : "entries", []( auto const& ) { return true; } );
        auto both = tables_;
        both.insert( both.end(), oldTables_.begin(), oldTables_.end() );
        auto const names = namesFor( rule, rule.name, both );
        if( isNumber )
            return add( "resources like " + quoted( rule.name ), [ & ]( NamedTable const& table ) {
                return std::ranges::binary_search( names, table.name );
            } );
        for( String const& name : names )
            add( "size of " + quoted( name ), [ & ]( auto const& table ) { return table.name == name; } );
    }
    /// The number of those that are meant, or the sum of their sizes.
    static std::int64_t amountIn( std::vector<NamedTable> const& tables, StageMeasure of,
                                  auto const& isMeant ) {
        std::int64_t amount = 0;
        for( NamedTable const& table : tables ) {
            if( isMeant( table ) )
                amount += of == StageMeasure::tables ? 1 : table.size;
        }
        return amount;
    }

    Rules const& rules_;
    std::vector<StageMap> maps_;
    std::vector<NamedTable> tables_;
    std::vector<NamedTable> oldTables_ = {};
    bool hasOld_;
    Budget budget_ = {};
};

} // namespace

std::optional<std::int64_t> Use::percent() const {
    if( used <= 0 )
        return 0;
    if( available <= 0 )
        return std::nullopt;
    return ( used * 100 + available - 1 ) / available;
}

std::size_t Budget::broken( RuleLevel level ) const {
    auto const over = std::ranges::count_if(
        uses, [ & ]( Use const& use ) { return use.isOver() && use.rule->level == level; } );
    auto const unjudged = std::ranges::count( problems, level, &RuleProblem::level );
    return static_cast<std::size_t>( over + unjudged );
}

Use useOf( CapacityRule const& capacity, StageMap const& map, std::size_t stage ) {
    StageLoad sum;
    for( StageGroup const& group : map.groups ) {
        if( !capacity.isFor( group ) )
            continue;
        StageLoad const& load = group.loads[ stage ];
        sum.spanning += load.spanning;
        sum.entries += load.entries;
        sum.tables += load.tables;
        sum.stated += load.stated;
    }
    String const direction = capacity.ingress ? *capacity.ingress ? "ingress " : "egress " : "";
    return { &capacity,
             direction + capacity.type + " " + wordOf( capacity.of ),
             map.files.front()->value(),
             map.stages[ stage ],
             static_cast<std::int64_t>( amountOf( sum, capacity.of ) ),
             static_cast<std::int64_t>( capacity.available ),
             capacity.of == StageMeasure::entries ? sum.tables - sum.stated : 0 };
}

std::vector<Use> capacityUses( Rules const& rules, StageMap const& map ) {
    std::vector<Use> uses;
    for( CapacityRule const& capacity : rules.capacities ) {
        for( std::size_t i = 0; i < map.stages.size(); ++i ) {
            if( capacity.level != RuleLevel::off && capacity.isFor( map.stages[ i ] ) )
                uses.push_back( useOf( capacity, map, i ) );
        }
    }
    return uses;
}

Budget budgetOf( Rules const& rules, Configuration const& configuration, Configuration const* old ) {
    return Judge( rules, configuration, old ).judge();
}

Row rowOf( Use const& use ) {
    Rule const& rule = *use.rule;
    return { { "rule", wordOf( rule.kind ) },
             { "line", rule.line },
             { "level", wordOf( rule.level ) },
             { "reason", rule.reason },
             { "what", use.what },
             { "contextFile", use.contextFile.empty() ? Value() : Value( use.contextFile ) },
             { "stage", use.stage ? Value( static_cast<U32>( *use.stage ) ) : Value() },
             { "used", use.used },
             { "available", use.available },
             { "percent", valueIf( use.percent() ) },
             { "slack", use.slack() },
             { "unstated", use.unstated },
             { "over", use.isOver() } };
}

Row rowOf( Budget const& budget ) {
    auto const problemRow = []( RuleProblem const& problem ) {
        return Row{ { "rule", wordOf( problem.rule->kind ) },
                    { "line", problem.rule->line },
                    { "level", wordOf( problem.level ) },
                    { "reason", problem.rule->reason },
                    { "problem", problem.problem } };
    };
    return { { "errors", static_cast<U32>( budget.broken( RuleLevel::error ) ) },
             { "warnings", static_cast<U32>( budget.broken( RuleLevel::warn ) ) },
             { "notJudged", static_cast<U32>( budget.notJudged ) },
             { "problems", listOf( budget.problems, problemRow ) },
             { "uses", listOf( budget.uses, []( Use const& use ) { return rowOf( use ); } ) } };
}

} // namespace Bfri
