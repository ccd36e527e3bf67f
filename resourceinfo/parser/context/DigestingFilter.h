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
        digests_.null();
        return drops() || filter_.Null();
    }
    bool Bool( bool value ) {
        digests_.boolean( value );
        return drops() || filter_.Bool( value );
    }
    bool Int( int value ) {
        integer( value );
        return drops() || filter_.Int( value );
    }
    bool Uint( unsigned value ) {
        digests_.integer( value );
        return drops() || filter_.Uint( value );
    }
    bool Int64( std::int64_t value ) {
        integer( value );
        return drops() || filter_.Int64( value );
    }
    bool Uint64( std::uint64_t value ) {
        digests_.integer( value );
        return drops() || filter_.Uint64( value );
    }
    bool Double( double value ) {
        digests_.real( value );
        return drops() || filter_.Double( value );
    }
    bool String( char const* text, Size length, bool copy ) {
        digests_.string( { text, length } );
        return drops() || filter_.String( text, length, copy );
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
    void integer( std::int64_t value ) {
        if( value < 0 )
            digests_.negativeInteger( value );
        else
            digests_.integer( static_cast<std::uint64_t>( value ) );
    }
    /// Whether the value that has come is dropped, or in one that is.
    bool drops() { return droppedDepth_ > 0 || filter_.dropsNext(); }

    template<class Start>
    bool starts( bool isArray, Start start ) {
        digests_.containerStarts( isArray );
        if( !drops() )
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
