#include "LeafExample.h"

#include <map>
#include <string>
#include <utility>

#include "LeafRows.h"
#include "ProgramBuilder.h"

namespace bfgen {

namespace {

constexpr uint32_t leafStages = 12;

class LeafBuilder {
  public:
    explicit LeafBuilder( uint32_t pipeline ) : builder_( pipeline, leafStages, "Leaf" ) {}

    Program build( LeafRows const& rows );

  private:
    void addMatch( MatchRow const& row );
    void addAttendant( AttendantRow const& row );
    void addUse( UseRow const& row );
    void add( bool ingress, std::string_view name, Table table );

    ProgramBuilder builder_;
    std::map<std::string_view, Table*> tables_; // by the names of the rows
};

Program LeafBuilder::build( LeafRows const& rows ) {
    for( MatchRow const& row : rows.matches ) {
        addMatch( row );
    }
    for( AttendantRow const& row : rows.attendants ) {
        addAttendant( row );
    }
    for( UseRow const& row : rows.uses ) {
        addUse( row );
    }
    for( LearnQuantaRow const& row : rows.learnQuanta ) {
        builder_.addLearnQuanta( { builder_.qualified( true, row.name ), 0, row.configType, row.fields } );
    }
    for( HashRow const& row : rows.hashes ) {
        builder_.addHashCalculation( { builder_.qualified( true, row.name ), 0, 0, row.fields } );
    }
    builder_.program().headers = rows.headers;
    builder_.program().phvRecords = rows.phvRecords;
    return std::move( builder_.program() );
}

void LeafBuilder::addMatch( MatchRow const& row ) {
    Table table = makeMatchTable( row.kind, row.size, row.placement, row.idleTime );
    auto& match = std::get<Match>( table.details );
    match.keys = row.keys;
    match.staticEntries = row.staticEntries;
    for( std::string_view const action : row.actions ) {
        builder_.addAction( match, std::string( action ) );
    }
    add( row.ingress, row.name, std::move( table ) );
}

void LeafBuilder::addAttendant( AttendantRow const& row ) {
    Table table = makeAttendant( row.details, row.size, row.placement );
    table.how = row.how;
    add( row.ingress, row.name, std::move( table ) );
}

void LeafBuilder::add( bool ingress, std::string_view name, Table table ) {
    table.ingress = ingress;
    table.name = builder_.qualified( ingress, name );
    builder_.nameLogicalPipe( table );
    tables_[ name ] = &builder_.add( std::move( table ) );
}

void LeafBuilder::addUse( UseRow const& row ) {
    Table& owner = *tables_.at( row.owner );
    Table const& attendant = *tables_.at( row.attendant );
    auto& match = std::get<Match>( owner.details );
    link( owner, attendant );
    if( std::holds_alternative<Selection>( attendant.details ) ) {
        match.actionProfile = owner.name + "_profile";
    }
    for( Action& action : match.actions ) {
        if( action.name == row.action ) {
            useInAction( action, attendant );
        }
    }
}

} // namespace

Program makeLeafProgram( uint32_t pipeline ) {
    return LeafBuilder( pipeline ).build( pipeline == 0 ? routingRows() : overlayRows() );
}

} // namespace bfgen
