#pragma once

#include "bench/load/RawTable.h"

/// Reads an element of "tables" through a library, like PullOut.
template<class Library>
class TableReader {
  public:
    template<class Value>
    static RawTable read( Value&& table ) {
        RawTable raw;
        Library::members( table, [ & ]( auto name, auto&& value ) {
            readCommon( name, value, raw ) || readAttached( name, value, raw ) ||
                readMatch( name, value, raw );
        } );
        return raw;
    }

  private:
    template<class Name, class Value>
    static bool readCommon( Name name, Value&& value, RawTable& raw ) {
        if( name == "name" )
            raw.name = Library::text( value );
        else if( name == "table_type" )
            raw.type = Library::text( value );
        else if( name == "handle" )
            raw.handle = Library::number( value );
        else if( name == "size" )
            raw.size = Library::number( value );
        else if( name == "direction" )
            raw.direction = Library::text( value );
        else if( name == "logical_pipe" )
            raw.logicalPipe = Library::text( value );
        else if( name == "stage_tables" )
            raw.stageTables = readStageTables( value );
        else
            return false;
        return true;
    }

    template<class Name, class Value>
    static bool readAttached( Name name, Value&& value, RawTable& raw ) {
        if( name == "how_referenced" )
            raw.howReferenced = Library::text( value );
        else if( name == "statistics_type" )
            raw.statisticsType = Library::text( value );
        else if( name == "meter_type" )
            raw.meterType = Library::text( value );
        else if( name == "meter_granularity" )
            raw.meterGranularity = Library::text( value );
        else if( name == "pre_color_field_name" )
            raw.hasPreColor = true;
        else if( name == "alu_width" )
            raw.aluWidth = Library::number( value );
        else if( name == "dual_width_mode" )
            raw.dualWidth = Library::boolean( value );
        else
            return false;
        return true;
    }

    template<class Name, class Value>
    static bool readMatch( Name name, Value&& value, RawTable& raw ) {
        if( name == "is_resource_controllable" )
            raw.isControllable = Library::boolean( value );
        else if( name == "static_entries" )
            Library::elements( value, [ & ]( auto&& ) { raw.hasStaticEntries = true; } );
        else if( name == "action_profile" )
            raw.hasActionProfile = true;
        else if( name == "match_attributes" )
            readMatchAttributes( value, raw );
        else if( name == "actions" )
            Library::elements( value,
                               [ & ]( auto&& action ) { raw.actions.push_back( readAction( action ) ); } );
        else if( name == "action_data_table_refs" )
            raw.actionData = readReferences( value );
        else if( name == "selection_table_refs" )
            raw.selection = readReferences( value );
        else if( name == "statistics_table_refs" )
            raw.statistics = readReferences( value );
        else if( name == "meter_table_refs" )
            raw.meters = readReferences( value );
        else if( name == "stateful_table_refs" )
            raw.registers = readReferences( value );
        else
            return false;
        return true;
    }

    template<class Value>
    static void readMatchAttributes( Value&& attributes, RawTable& raw ) {
        Library::members( attributes, [ & ]( auto name, auto&& value ) {
            if( name == "match_type" )
                raw.matchType = Library::text( value );
            else if( name == "number_partitions" )
                raw.partitions = Library::number( value );
            else if( name == "stage_tables" )
                raw.stageTables = readStageTables( value );
            else if( name == "units" ) {
                raw.hasUnits = true;
                Library::elements( value, [ & ]( auto&& unit ) { readUnit( unit, raw ); } );
            }
        } );
    }

    template<class Value>
    static void readUnit( Value&& unit, RawTable& raw ) {
        Library::members( unit, [ & ]( auto name, auto&& attributes ) {
            if( name != "match_attributes" )
                return;
            Library::members( attributes, [ & ]( auto member, auto&& value ) {
                if( member != "stage_tables" )
                    return;
                for( RawStageTable const& stageTable : readStageTables( value ) )
                    raw.unitStageTables.push_back( stageTable );
            } );
        } );
    }

    template<class Value>
    static std::vector<RawStageTable> readStageTables( Value&& stageTables ) {
        std::vector<RawStageTable> list;
        Library::elements( stageTables, [ & ]( auto&& stageTable ) {
            RawStageTable& raw = list.emplace_back();
            Library::members( stageTable, [ & ]( auto name, auto&& value ) {
                if( name == "stage_number" )
                    raw.stageNumber = Library::number( value );
                else if( name == "stage_table_type" )
                    raw.type = Library::text( value );
                else if( name == "size" )
                    raw.size = Library::number( value );
                else if( name == "idletime_stage_table" )
                    readIdleTime( value, raw );
            } );
        } );
        return list;
    }

    template<class Value>
    static void readIdleTime( Value&& idleTime, RawStageTable& raw ) {
        raw.hasIdleTime = true;
        Library::members( idleTime, [ & ]( auto name, auto&& value ) {
            if( name == "precision" )
                raw.precision = Library::number( value );
        } );
    }

    template<class Value>
    static RawAction readAction( Value&& action ) {
        RawAction raw;
        Library::members( action, [ & ]( auto name, auto&& value ) {
            if( name == "name" )
                raw.name = Library::text( value );
            else if( name == "handle" )
                raw.handle = Library::number( value );
            else if( name == "indirect_resources" )
                Library::elements( value, [ & ]( auto&& resource ) { readIndirect( resource, raw ); } );
        } );
        return raw;
    }

    template<class Value>
    static void readIndirect( Value&& resource, RawAction& raw ) {
        Library::members( resource, [ & ]( auto name, auto&& value ) {
            if( name == "resource_name" )
                raw.indirectResources.push_back( Library::text( value ) );
        } );
    }

    template<class Value>
    static std::vector<RawReference> readReferences( Value&& references ) {
        std::vector<RawReference> list;
        Library::elements( references, [ & ]( auto&& reference ) {
            RawReference& raw = list.emplace_back();
            Library::members( reference, [ & ]( auto name, auto&& value ) {
                if( name == "name" )
                    raw.name = Library::text( value );
                else if( name == "handle" )
                    raw.handle = Library::number( value );
                else if( name == "how_referenced" )
                    raw.howReferenced = Library::text( value );
            } );
        } );
        return list;
    }
};
