#pragma once

#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/LineGuesses.h"
#include "resourceinfo/parser/context/MemberNames.h"
#include "resourceinfo/parser/context/SurveyNotes.h"

#include <array>
#include <cstdint>
#include <utility>

namespace Context {

/// How deep the reader is in a file, and how deep it may get before its stack overflows: the 1,001st level
/// ends the reading.
class Depth {
  public:
    static constexpr unsigned maximum = 1000;

    bool exceeded() const { return value_ > maximum; }
    unsigned value() const { return value_; }
    bool descend() { return ++value_ <= maximum; }
    void ascend() { --value_; }

  private:
    unsigned value_ = 0;
};

/// A value that is checked for its syntax, and no more.
class CheckedValue {
    using Size = rapidjson::SizeType;

  public:
    explicit CheckedValue( Depth& depth ) : depth_( depth ) {}

    unsigned level() const { return depth_.value(); }

    bool Null() { return true; }
    bool Bool( bool ) { return true; }
    bool Int( int ) { return true; }
    bool Uint( unsigned ) { return true; }
    bool Int64( std::int64_t ) { return true; }
    bool Uint64( std::uint64_t ) { return true; }
    bool Double( double ) { return true; }
    bool RawNumber( char const*, Size, bool ) { return true; }
    bool String( char const*, Size, bool ) { return true; }
    bool Key( char const*, Size, bool ) { return true; }
    bool StartObject() { return depth_.descend(); }
    bool StartArray() { return depth_.descend(); }
    bool EndObject( Size ) { return depth_.ascend(), true; }
    bool EndArray( Size ) { return depth_.ascend(), true; }

  private:
    Depth& depth_;
};

/// The value of a member that no pass reads: for the reader, the same on a faster way (DroppedScan.h).
struct DroppedValue : CheckedValue {
    DroppedValue( Depth& depth, LineGuesses& lines ) : CheckedValue( depth ), guesses( lines ) {}

    LineGuesses& guesses;
};

/// Stands between RapidJSON's reader and a document: hands on the members that some pass reads, so that the
/// document takes the memory of what is used. Of the elements of "static_entries" only matters whether there
/// are any: the document has a null for all of them. To be used through ContextReader.h, with the reader's
/// default flags: there the reader asks dropsNext() before each value.
class PruningFilter {
    using Size = rapidjson::SizeType;

  public:
    /// What the document may take, roughly, of a file of that size on its disk: enough for whatever a
    /// compiler writes, packed or not. A small file that is made to fill the memory is refused.
    static constexpr std::size_t mostKeptOf( std::uint64_t sizeOnDisk ) {
        return ( std::size_t{ 128 } << 20 ) + 64 * sizeOnDisk;
    }

    /// Reading ends where the document would take more than `mostKept`. Notes are taken where there are any.
    PruningFilter( JsonDocument& document, std::size_t mostKept, SurveyNotes* notes = nullptr )
        : document_( document ), mostKept_( mostKept ), notes_( notes ) {}

    Depth const& depth() const { return depth_; }
    std::size_t mostKept() const { return mostKept_; }
    DroppedValue dropped() { return { depth_, guesses_ }; }
    /// Whether the value that comes next is dropped. True once for each such value.
    bool dropsNext() { return std::exchange( dropsNext_, false ) || depth_.value() == staticEntriesDepth_; }

    bool Null() { return keepsScalar() && document_.Null(); }
    bool Bool( bool value ) { return keepsScalar() && document_.Bool( value ); }
    bool Int( int value ) { return keepsScalar() && document_.Int( value ); }
    bool Uint( unsigned value ) { return keepsScalar() && document_.Uint( value ); }
    bool Int64( std::int64_t value ) { return keepsScalar() && document_.Int64( value ); }
    bool Uint64( std::uint64_t value ) { return keepsScalar() && document_.Uint64( value ); }
    bool Double( double value ) { return keepsScalar() && document_.Double( value ); }
    bool RawNumber( char const* text, Size length, bool copy ) {
        return keepsScalar( length ) && document_.RawNumber( text, length, copy );
    }
    bool String( char const* text, Size length, bool copy ) {
        return keepsScalar( length ) && document_.String( text, length, copy );
    }

    /// The document points to the names in the table.
    bool Key( char const* name, Size length, bool ) {
        std::string_view const kept = memberNameOf( { name, length } );
        if( kept.empty() ) {
            dropsNext_ = true;
            return true;
        }
        ++keptMembers_[ depth_.value() ];
        staticEntriesKey_ = kept == "static_entries" ? depth_.value() : noDepth;
        if( notes_ )
            notes_->member( kept );
        return keeps() && document_.Key( kept.data(), length, false );
    }

    bool StartObject() {
        if( !starts( false ) )
            return false;
        keptMembers_[ depth_.value() ] = 0;
        return document_.StartObject();
    }
    bool StartArray() {
        bool const isStaticEntries = depth_.value() == staticEntriesKey_;
        if( !starts( true ) )
            return false;
        if( isStaticEntries )
            staticEntriesDepth_ = depth_.value();
        return document_.StartArray();
    }
    bool EndObject( Size ) {
        Size const members = keptMembers_[ depth_.value() ];
        staticEntriesKey_ = noDepth; // its depth may be that of the next array, which then has no name
        depth_.ascend();
        if( notes_ )
            notes_->containerEnds();
        return document_.EndObject( members );
    }
    bool EndArray( Size elements ) {
        if( depth_.value() == staticEntriesDepth_ )
            return endStaticEntries( elements );
        depth_.ascend();
        if( notes_ )
            notes_->containerEnds();
        return document_.EndArray( elements );
    }

  private:
    /// Whether a value with a text of that length still has a place.
    bool keeps( std::size_t length = 0 ) {
        kept_ += sizeof( JsonValue ) + length;
        return kept_ <= mostKept_;
    }

    bool keepsScalar( std::size_t length = 0 ) {
        if( notes_ )
            notes_->scalar();
        return keeps( length );
    }
    bool starts( bool isArray ) {
        if( notes_ )
            notes_->containerStarts( isArray );
        return depth_.descend() && keeps();
    }
    bool endStaticEntries( Size elements ) {
        staticEntriesDepth_ = noDepth;
        depth_.ascend();
        if( notes_ )
            notes_->staticEntriesEnd( elements );
        if( elements == 0 )
            return document_.EndArray( 0 );
        return document_.Null() && document_.EndArray( 1 );
    }

    static constexpr unsigned noDepth = Depth::maximum + 2;

    JsonDocument& document_;
    std::size_t const mostKept_;
    SurveyNotes* notes_;
    Depth depth_;
    LineGuesses guesses_;
    std::size_t kept_ = 0;
    bool dropsNext_ = false;
    unsigned staticEntriesKey_ = noDepth;              // depth of the object whose last member has the name
    unsigned staticEntriesDepth_ = noDepth;            // depth of the array whose elements are dropped
    std::array<Size, Depth::maximum + 1> keptMembers_; // of the object at each depth
};

} // namespace Context
