#pragma once

#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/LineGuesses.h"
#include "resourceinfo/parser/context/MemberNames.h"

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
/// document takes the memory of what is used. To be used through ContextReader.h, with the reader's default
/// flags: there the reader asks dropsNext() before each value.
class PruningFilter {
    using Size = rapidjson::SizeType;

  public:
    explicit PruningFilter( JsonDocument& document ) : document_( document ) {}

    Depth const& depth() const { return depth_; }
    DroppedValue dropped() { return { depth_, guesses_ }; }
    /// Whether the value that comes next is dropped. True once for each such value.
    bool dropsNext() { return std::exchange( dropsNext_, false ); }

    bool Null() { return keeps() && document_.Null(); }
    bool Bool( bool value ) { return keeps() && document_.Bool( value ); }
    bool Int( int value ) { return keeps() && document_.Int( value ); }
    bool Uint( unsigned value ) { return keeps() && document_.Uint( value ); }
    bool Int64( std::int64_t value ) { return keeps() && document_.Int64( value ); }
    bool Uint64( std::uint64_t value ) { return keeps() && document_.Uint64( value ); }
    bool Double( double value ) { return keeps() && document_.Double( value ); }
    bool RawNumber( char const* text, Size length, bool copy ) {
        return keeps( length ) && document_.RawNumber( text, length, copy );
    }
    bool String( char const* text, Size length, bool copy ) {
        return keeps( length ) && document_.String( text, length, copy );
    }

    /// The document points to the names in the table.
    bool Key( char const* name, Size length, bool ) {
        std::string_view const kept = memberNameOf( { name, length } );
        if( kept.empty() ) {
            dropsNext_ = true;
            return true;
        }
        ++keptMembers_[ depth_.value() ];
        return keeps() && document_.Key( kept.data(), length, false );
    }

    bool StartObject() {
        if( !depth_.descend() || !keeps() )
            return false;
        keptMembers_[ depth_.value() ] = 0;
        return document_.StartObject();
    }
    bool StartArray() { return depth_.descend() && keeps() && document_.StartArray(); }
    bool EndObject( Size ) {
        Size const members = keptMembers_[ depth_.value() ];
        depth_.ascend();
        return document_.EndObject( members );
    }
    bool EndArray( Size elements ) {
        depth_.ascend();
        return document_.EndArray( elements );
    }

    /// What the document may take, roughly, before the file is refused. A file of a gigabyte, as compilers
    /// write them, comes to a tenth of it; one that is made to fill the memory does not.
    static constexpr std::size_t mostKept = std::size_t{ 128 } << 20;

  private:
    /// Whether a value with a text of that length still has a place.
    bool keeps( std::size_t length = 0 ) {
        kept_ += sizeof( JsonValue ) + length;
        return kept_ <= mostKept;
    }

    JsonDocument& document_;
    Depth depth_;
    LineGuesses guesses_;
    std::size_t kept_ = 0;
    bool dropsNext_ = false;
    std::array<Size, Depth::maximum + 1> keptMembers_; // of the object at each depth
};

} // namespace Context
