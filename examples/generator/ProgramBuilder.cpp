#include "ProgramBuilder.h"

#include <utility>

namespace bfgen {

namespace {

// A handle has 28 bits: the kind in the upper four, the pipeline in the next two, a serial number below.
// The kinds of the tables are 1 and up, in the order of the alternatives of Details.
constexpr uint32_t kindShift = 24;
constexpr uint32_t pipelineShift = 22;
constexpr uint32_t actionKind = 8;
constexpr uint32_t learnQuantaKind = 9;
constexpr uint32_t hashKind = 10;
constexpr uint32_t fieldListKind = 11;

uint32_t kindOf( Details const& details ) { return static_cast<uint32_t>( details.index() ) + 1; }

} // namespace

ProgramBuilder::ProgramBuilder( uint32_t pipelineIndex, uint32_t stages, std::string_view controlPrefix )
    : pipelineIndex_( pipelineIndex ), controlPrefix_( controlPrefix ) {
    program_.pipeline = static_cast<char>( 'a' + pipelineIndex );
    program_.name = pipelineName( pipelineIndex );
    program_.stages = stages;
}

std::string ProgramBuilder::qualified( bool ingress, std::string_view name ) const {
    return program_.name + "." + controlPrefix_ + ( ingress ? "Ingress." : "Egress." ) + std::string( name );
}

Table& ProgramBuilder::add( Table table ) {
    table.name = uniqueName( table.name );
    table.handle = newHandle( kindOf( table.details ) );
    return program_.tables.emplace_back( std::move( table ) );
}

void ProgramBuilder::nameLogicalPipe( Table& table ) const {
    table.logicalPipe = std::string( 1, program_.pipeline );
}

void ProgramBuilder::addAction( Match& match, std::string name ) {
    match.actions.push_back( { std::move( name ), newHandle( actionKind ), std::nullopt } );
}

void ProgramBuilder::addLearnQuanta( LearnQuanta quanta ) {
    quanta.handle = newHandle( learnQuantaKind );
    program_.learnQuanta.push_back( std::move( quanta ) );
}

void ProgramBuilder::addHashCalculation( HashCalculation calculation ) {
    calculation.handle = newHandle( hashKind );
    calculation.fieldListHandle = newHandle( fieldListKind );
    program_.hashCalculations.push_back( std::move( calculation ) );
}

uint32_t ProgramBuilder::newHandle( uint32_t kind ) {
    return kind << kindShift | pipelineIndex_ << pipelineShift | ++serial_;
}

std::string ProgramBuilder::uniqueName( std::string const& name ) {
    uint32_t const count = ++namesUsed_[ name ];
    return count == 1 ? name : name + "_" + std::to_string( count );
}

std::string pipelineName( uint32_t pipeline ) {
    return std::string( "pipe_" ) + static_cast<char>( 'a' + pipeline );
}

bool isPlaced( Table const& table ) {
    auto const* match = std::get_if<Match>( &table.details );
    return !table.stageTables.empty() ||
           ( match != nullptr && !match->units.empty() && !match->units.front().empty() );
}

References& referencesFor( Match& owner, Details const& attendant ) {
    if( std::holds_alternative<ActionData>( attendant ) ) {
        return owner.actionData;
    }
    if( std::holds_alternative<Selection>( attendant ) ) {
        return owner.selection;
    }
    if( std::holds_alternative<Statistics>( attendant ) ) {
        return owner.statistics;
    }
    return std::holds_alternative<Meter>( attendant ) ? owner.meters : owner.stateful;
}

void link( Table& owner, Table const& attendant ) {
    References& references = referencesFor( std::get<Match>( owner.details ), attendant.details );
    if( !references.has_value() ) {
        references.emplace();
    }
    references->push_back( { attendant.name, attendant.handle, attendant.how } );
}

void useInAction( Action& action, Table const& attendant ) {
    if( !action.indirectResources.has_value() ) {
        action.indirectResources.emplace();
    }
    action.indirectResources->push_back( attendant.name );
}

} // namespace bfgen
