#include "inspect/model/Pipelines.h"

#include <map>

namespace Bfri {

namespace {

using Context::FileSurvey;
using Context::SurveyedTable;

Kind kindOfRecord( SurveyedTable const& table ) {
    if( table.type == "match" )
        return Kind::tables;
    if( table.type == "statistics" )
        return Kind::counters;
    if( table.type == "stateful" )
        return Kind::registers;
    return table.isWred ? Kind::wreds : Kind::meters;
}

/// Records by position in the parser's sequence of their kind.
class Positions {
  public:
    explicit Positions( std::size_t records ) : programs_( records ) {}

    void add( std::optional<U32> position, FileSurvey const& file, std::size_t records = 1 ) {
        for( std::size_t i = 0; position && i < records; ++i )
            programs_.at( *position + i ).push_back( &file );
    }
    std::vector<Programs> take() { return std::move( programs_ ); }

  private:
    std::vector<Programs> programs_;
};

void addTable( SurveyedTable const& table, FileSurvey const& file, Kind kind, Positions& positions ) {
    if( kind == Kind::resources )
        positions.add( table.resource, file );
    else if( kind == Kind::actions )
        positions.add( table.firstAction, file, table.actions.size() );
    else if( table.record && kindOfRecord( table ) == kind )
        positions.add( table.record, file );
}

std::vector<Programs> byPosition( Configuration const& configuration, Kind kind, std::size_t records ) {
    Positions positions( records );
    for( FileSurvey const& file : configuration.files ) {
        for( SurveyedTable const& table : file.tables )
            addTable( table, file, kind, positions );
        for( Context::SurveyedLearnQuanta const& quanta : file.learnQuantas ) {
            if( kind == Kind::learnQuantas )
                positions.add( quanta.record, file );
        }
    }
    return positions.take();
}

/// How records without a position are found: by handle or by name.
using Key = std::pair<U32, std::string_view>;

template<class Step>
void forEachKey( FileSurvey const& file, Kind kind, Step const& step ) {
    switch( kind ) {
    case Kind::headers:
        for( auto const& header : file.headers )
            step( Key( 0, header.name ) );
        break;
    case Kind::hashes:
        for( auto const& hash : file.hashes )
            step( Key( 0, hash.name ) );
        break;
    case Kind::phvFields:
        for( auto const& field : file.phvFields )
            step( Key( 0, field.name ) );
        break;
    default:
        for( auto const& table : file.tables ) {
            if( table.resource && table.handle )
                step( Key( *table.handle, {} ) );
        }
    }
}

std::vector<Programs> byKey( Configuration const& configuration, Kind kind, std::vector<Row> const& rows ) {
    std::map<Key, Programs> programs;
    for( FileSurvey const& file : configuration.files ) {
        forEachKey( file, kind, [ & ]( Key const& key ) {
            Programs& ofKey = programs[ key ];
            if( ofKey.empty() || ofKey.back() != &file )
                ofKey.push_back( &file );
        } );
    }
    std::vector<Programs> result;
    for( Row const& row : rows ) {
        bool const isHandle = kind == Kind::handles;
        auto const found = programs.find( isHandle ? Key( valueAs<Hex>( row, "handle" ).value, {} )
                                                   : Key( 0, valueAs<String>( row, "name" ) ) );
        result.push_back( found == programs.end() ? Programs() : found->second );
    }
    return result;
}

} // namespace

std::vector<Programs> programsOf( Configuration const& configuration, Kind kind ) {
    auto const rows = kindOf( kind ).rows( configuration.parser() );
    switch( kind ) {
    case Kind::headers:
    case Kind::hashes:
    case Kind::phvFields:
    case Kind::handles:
        return byKey( configuration, kind, rows );
    default:
        return byPosition( configuration, kind, rows.size() );
    }
}

} // namespace Bfri
