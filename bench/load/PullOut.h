#pragma once

// The model out of a document of any library: one walk from front to end that looks at what the model needs.
// A library is a type with static functions for its values: `members` and `elements` hand those of an object
// or array to a function, `text`, `number` and `boolean` give a scalar's value.

#include "bench/load/TableReader.h"

#include <algorithm>

template<class Library>
class PullOut {
  public:
    explicit PullOut( String path ) : path_( std::move( path ) ) {}

    template<class Value>
    Model operator()( Value&& root ) {
        Library::members( root, [ & ]( auto name, auto&& value ) {
            if( name == "tables" )
                Library::elements( value, [ & ]( auto&& table ) {
                    tables_.push_back( TableReader<Library>::read( table ) );
                } );
            else if( name == "learn_quanta" )
                Library::elements( value, [ & ]( auto&& lq ) { addLearnQuanta( lq ); } );
            else if( name == "phv_allocation" )
                Library::elements( value, [ & ]( auto&& stage ) { addPhvStage( stage ); } );
            else if( name == "flexible_headers" )
                Library::elements( value, [ & ]( auto&& header ) { addHeader( header ); } );
            else if( name == "dynamic_hash_calculations" )
                Library::elements( value, [ & ]( auto&& hash ) { addHash( hash ); } );
        } );
        addTables( tables_, path_, model_ );
        return std::move( model_ );
    }

  private:
    template<class Value>
    void addLearnQuanta( Value&& lq ) {
        BfLearnQuantaInfo record;
        bool isRecorded = false;
        Library::members( lq, [ & ]( auto name, auto&& value ) {
            if( name == "name" )
                record.name = Library::text( value );
            else if( name == "handle" )
                record.handle = Library::number( value );
            else if( name == "lq_cfg_type" )
                isRecorded = true;
        } );
        if( isRecorded )
            model_.learnQuantas.push_back( std::move( record ) );
    }

    template<class Value>
    void addPhvStage( Value&& stage ) {
        Library::members( stage, [ & ]( auto name, auto&& containers ) {
            if( name != "ingress" && name != "egress" )
                return;
            auto& fields = name == "ingress" ? model_.ingressPhv : model_.egressPhv;
            Library::elements( containers,
                               [ & ]( auto&& container ) { addPhvContainer( container, fields ); } );
        } );
    }

    template<class Value, class Fields>
    static void addPhvContainer( Value&& container, Fields& fields ) {
        Library::members( container, [ & ]( auto name, auto&& records ) {
            if( name == "records" )
                Library::elements( records, [ & ]( auto&& record ) { addPhvRecord( record, fields ); } );
        } );
    }

    template<class Value, class Fields>
    static void addPhvRecord( Value&& record, Fields& fields ) {
        bool isPov = false;
        std::string_view field;
        U32 width = 0;
        Library::members( record, [ & ]( auto name, auto&& value ) {
            if( name == "is_pov" )
                isPov = Library::boolean( value );
            else if( name == "field_name" )
                field = Library::text( value );
            else if( name == "field_width" )
                width = Library::number( value );
        } );
        if( isPov )
            return;
        auto found = fields.find( field );
        if( found == fields.end() )
            found = fields.emplace( field, U8( 0 ) ).first;
        found->second = std::max( found->second, static_cast<U8>( width % 32 ) );
    }

    template<class Value>
    void addHeader( Value&& header ) {
        String name;
        U32 bits = 0;
        Library::members( header, [ & ]( auto member, auto&& value ) {
            if( member == "name" )
                name = Library::text( value );
            else if( member == "fields" )
                Library::elements( value, [ & ]( auto&& field ) { bits += bitsOf( field ); } );
        } );
        model_.headers.emplace( std::move( name ), static_cast<U16>( bits ) / 8 );
    }

    template<class Value>
    static U32 bitsOf( Value&& field ) {
        U32 bits = 0;
        Library::members( field, [ & ]( auto name, auto&& slice ) {
            if( name != "slice" )
                return;
            Library::members( slice, [ & ]( auto member, auto&& value ) {
                if( member == "bit_width" )
                    bits = Library::number( value );
            } );
        } );
        return bits;
    }

    template<class Value>
    void addHash( Value&& calculation ) {
        String name;
        BfDynamicHashInfo record;
        Library::members( calculation, [ & ]( auto member, auto&& value ) {
            if( member == "name" )
                name = Library::text( value );
            else if( member == "handle" )
                record.tableHdl = Library::number( value );
            else if( member == "field_lists" )
                Library::elements( value, [ & ]( auto&& list ) { readFieldList( list, record ); } );
        } );
        record.fieldCount = static_cast<U32>( record.fieldNames.size() );
        model_.hashes.insert_or_assign( std::move( name ), std::move( record ) );
    }

    template<class Value>
    static void readFieldList( Value&& list, BfDynamicHashInfo& record ) {
        Library::members( list, [ & ]( auto name, auto&& value ) {
            if( name == "handle" )
                record.fieldListHdl = Library::number( value );
            else if( name == "fields" )
                Library::elements( value, [ & ]( auto&& field ) { readFieldName( field, record ); } );
        } );
    }

    template<class Value>
    static void readFieldName( Value&& field, BfDynamicHashInfo& record ) {
        Library::members( field, [ & ]( auto name, auto&& value ) {
            if( name == "name" )
                record.fieldNames.emplace_back( Library::text( value ) );
        } );
    }

    String path_;
    std::vector<RawTable> tables_;
    Model model_;
};
