#pragma once

// Context files and switch configurations as a test needs them: valid as made, each member to be changed.
//
//   ContextBuilder().table( matchTable( "acl" ).size( 512 ).idleTime( 3 ) ).without( "/learn_quanta" ).text()
//
// Every builder is a value; `with` and `without` reach any place of it by a JSON pointer.

#include "tests/support/JsonTree.h"

#include <initializer_list>

namespace Support {

/// The common base of all builders.
template<class Derived>
class JsonBuilder {
  public:
    /// Replaces or adds a value, given as JSON: with( "/size", "null" ).
    Derived& with( std::string_view pointer, JsonTree value ) {
        tree_.with( pointer, std::move( value ) );
        return self();
    }
    Derived& without( std::string_view pointer ) {
        tree_.without( pointer );
        return self();
    }

    JsonTree const& tree() const { return tree_; }
    std::string text() const { return tree_.text(); }

  protected:
    explicit JsonBuilder( JsonTree tree ) : tree_( std::move( tree ) ) {}
    Derived& self() { return static_cast<Derived&>( *this ); }
    /// Appends to an array, which is made first where there is none.
    Derived& append( std::string const& pointer, JsonTree value ) {
        if( !tree_.has( pointer ) )
            tree_.with( pointer, JsonTree::array() );
        return with( pointer + "/-", std::move( value ) );
    }

    JsonTree tree_;
};

/// The handle that builders give to a table of that name, unless told otherwise: below 2^28, the same in
/// every run, different for the names of one test.
std::uint32_t handleOf( std::string_view name );

/// An element of "stage_tables": in stage 0, of 1024 entries.
class StageTable : public JsonBuilder<StageTable> {
  public:
    explicit StageTable( std::string_view type = "ternary_match" );

    StageTable& number( std::int64_t stage ) { return with( "/stage_number", JsonTree::number( stage ) ); }
    StageTable& size( std::uint32_t entries ) { return with( "/size", JsonTree::number( entries ) ); }
    StageTable& idleTime( std::uint32_t precision );
};

/// An element of "tables".
class Table : public JsonBuilder<Table> {
  public:
    explicit Table( JsonTree tree ) : JsonBuilder( std::move( tree ) ) {}

    Table& handle( std::uint32_t handle ) { return with( "/handle", JsonTree::number( handle ) ); }
    Table& size( std::uint32_t entries ) { return with( "/size", JsonTree::number( entries ) ); }
    Table& logicalPipe( std::string_view pipe ) { return with( "/logical_pipe", JsonTree::string( pipe ) ); }
    /// "how_referenced" of a statistics, meter or stateful table.
    Table& referenced( std::string_view how ) { return with( "/how_referenced", JsonTree::string( how ) ); }
    Table& controllable( bool is ) { return with( "/is_resource_controllable", JsonTree::boolean( is ) ); }

    /// Of match tables.
    Table& matchType( std::string_view type );
    Table& partitions( std::uint32_t count );
    /// Replaces the stage tables, whether they are in "match_attributes" or in the table.
    Table& stages( std::vector<StageTable> const& stages );
    /// Replaces the stage tables by units, each with its own.
    Table& units( std::vector<std::vector<StageTable>> const& units );
    /// Idle time for the first stage table.
    Table& idleTime( std::uint32_t precision );

    /// An action that names resources in "indirect_resources"; none: without that member.
    Table& action( std::string_view name, std::initializer_list<std::string_view> resources = {} );

    /// References to tables of these names, with the handles that the builders give them.
    Table& actionData( std::string_view name, std::string_view how = "indirect" );
    Table& selection( std::string_view name );
    Table& statistics( std::string_view name ) {
        return reference( "/statistics_table_refs", name, "direct" );
    }
    Table& meter( std::string_view name ) { return reference( "/meter_table_refs", name, "direct" ); }
    Table& stateful( std::string_view name ) { return reference( "/stateful_table_refs", name, "direct" ); }

  private:
    Table& reference( std::string const& kind, std::string_view name, std::string_view how );
};

/// Tables of every kind, ingress, of 1024 entries in stage 0. A match table is ternary, controllable and has
/// one action. The others are complete for their kind.
Table matchTable( std::string_view name );
Table conditionTable( std::string_view name );
Table actionDataTable( std::string_view name );
Table selectionTable( std::string_view name );
Table statisticsTable( std::string_view name );
Table meterTable( std::string_view name );
Table wredTable( std::string_view name );
Table statefulTable( std::string_view name );

/// A context file: without flexible headers, with every required section, all empty.
class ContextBuilder : public JsonBuilder<ContextBuilder> {
  public:
    ContextBuilder();

    ContextBuilder& table( Table const& table ) { return append( "/tables", table.tree() ); }
    ContextBuilder& learnQuanta( std::string_view name );
    /// A stage in which a field has a width in either direction.
    ContextBuilder& phvStage( std::string_view field, std::uint32_t width );
    /// A flexible header of one field; the first one makes the section.
    ContextBuilder& flexibleHeader( std::string_view name, std::uint32_t bits );
    ContextBuilder& dynamicHash( std::string_view name, std::initializer_list<std::string_view> fields );
};

/// A device of a switch configuration, without pipelines.
class DeviceBuilder : public JsonBuilder<DeviceBuilder> {
  public:
    DeviceBuilder();

    DeviceBuilder& runtimeConfig( std::string_view path );
    DeviceBuilder& pipeline( std::string_view contextFile, std::initializer_list<std::uint32_t> pipes );
};

/// A switch configuration, without devices.
class SwitchConfBuilder : public JsonBuilder<SwitchConfBuilder> {
  public:
    SwitchConfBuilder();

    SwitchConfBuilder& device( DeviceBuilder const& device ) { return append( "/devices", device.tree() ); }
};

} // namespace Support
