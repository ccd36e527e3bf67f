#pragma once

#include "resourceinfo/parser/context/PruningFilter.h"
#include "resourceinfo/parser/context/ValueDigests.h"

namespace Context {

/// Takes digests of all values, and hands on to a PruningFilter what that keeps. For RapidJSON's reader:
/// nothing is passed over, so that a load takes longer.
class DigestingFilter {
    using Size = rapidjson::SizeType;

  public:
    DigestingFilter( PruningFilter& filter, ValueDigests& digests )
        : filter_( filter ), dropped_( filter.dropped() ), digests_( digests ) {}

    bool Null() {
        bool const isDropped = drops();
        digests_.null( isDropped );
        return isDropped || filter_.Null();
    }
    bool Bool( bool value ) {
        bool const isDropped = drops();
        digests_.boolean( value, isDropped );
        return isDropped || filter_.Bool( value );
    }
    bool Int( int value ) {
        bool const isDropped = drops();
        integer( value, isDropped );
        return isDropped || filter_.Int( value );
    }
    bool Uint( unsigned value ) {
        bool const isDropped = drops();
        digests_.integer( value, isDropped );
        return isDropped || filter_.Uint( value );
    }
    bool Int64( std::int64_t value ) {
        bool const isDropped = drops();
        integer( value, isDropped );
        return isDropped || filter_.Int64( value );
    }
    bool Uint64( std::uint64_t value ) {
        bool const isDropped = drops();
        digests_.integer( value, isDropped );
        return isDropped || filter_.Uint64( value );
    }
    bool Double( double value ) {
        bool const isDropped = drops();
        digests_.real( value, isDropped );
        return isDropped || filter_.Double( value );
    }
    bool String( char const* text, Size length, bool copy ) {
        bool const isDropped = drops();
        digests_.string( { text, length }, isDropped );
        return isDropped || filter_.String( text, length, copy );
    }
    bool Key( char const* name, Size length, bool copy ) {
        digests_.key( { name, length } );
        return droppedDepth_ > 0 || filter_.Key( name, length, copy );
    }
    bool StartObject() {
        return starts( false, [ this ] { return filter_.StartObject(); } );
    }
    bool StartArray() {
        return starts( true, [ this ] { return filter_.StartArray(); } );
    }
    bool EndObject( Size members ) {
        return ends( members, [ this ]( Size n ) { return filter_.EndObject( n ); } );
    }
    bool EndArray( Size elements ) {
        return ends( elements, [ this ]( Size n ) { return filter_.EndArray( n ); } );
    }
    bool RawNumber( char const*, Size, bool ) { return false; } // comes with other flags alone

  private:
    void integer( std::int64_t value, bool isDropped ) {
        if( value < 0 )
            digests_.negativeInteger( value, isDropped );
        else
            digests_.integer( static_cast<std::uint64_t>( value ), isDropped );
    }
    /// Whether the value that has come is dropped, or in one that is.
    bool drops() { return droppedDepth_ > 0 || filter_.dropsNext(); }

    template<class Start>
    bool starts( bool isArray, Start start ) {
        bool const isDropped = drops();
        digests_.containerStarts( isArray, isDropped );
        if( !isDropped )
            return start();
        ++droppedDepth_;
        return dropped_.StartObject();
    }
    template<class End>
    bool ends( Size count, End end ) {
        digests_.containerEnds();
        if( droppedDepth_ == 0 )
            return end( count );
        --droppedDepth_;
        return dropped_.EndObject( count );
    }

    PruningFilter& filter_;
    DroppedValue dropped_;
    ValueDigests& digests_;
    unsigned droppedDepth_ = 0; // of containers that are dropped
};

} // namespace Context
