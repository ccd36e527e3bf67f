#pragma once

#include <concepts>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <variant>

#include <rapidjson/prettywriter.h>
#include <rapidjson/writer.h>

#include "OutputFile.h"

namespace bfgen {

/// Streams JSON into a file; the nesting of the calls is the nesting of the text.
class JsonWriter {
  public:
    JsonWriter( OutputFile& file, bool compact ) {
        if( compact ) {
            writer_.emplace<Compact>( file );
        } else {
            writer_.emplace<Pretty>( file );
        }
    }

    /// An object, the root or an element of an array: body() writes its members.
    template<std::invocable Body>
    void object( Body&& body ) {
        emit( []( auto& writer ) { return writer.StartObject(); } );
        body();
        emit( []( auto& writer ) { return writer.EndObject(); } );
    }

    template<std::invocable Body>
    void object( std::string_view name, Body&& body ) {
        key( name );
        object( body );
    }

    /// An array: body() writes its elements.
    template<std::invocable Body>
    void array( std::string_view name, Body&& body ) {
        key( name );
        emit( []( auto& writer ) { return writer.StartArray(); } );
        body();
        emit( []( auto& writer ) { return writer.EndArray(); } );
    }

    /// An array of objects, one an item: body( item ) writes its members.
    template<typename Items, typename Body>
    void objects( std::string_view name, Items const& items, Body&& body ) {
        array( name, [ & ] {
            for( auto const& item : items ) {
                object( [ & ] { body( item ); } );
            }
        } );
    }

    /// An array of a number of objects: body( index ) writes the members of one.
    template<std::invocable<uint32_t> Body>
    void repeat( std::string_view name, uint32_t count, Body&& body ) {
        array( name, [ & ] {
            for( uint32_t index = 0; index < count; ++index ) {
                object( [ & ] { body( index ); } );
            }
        } );
    }

    /// An array of a number of plain values: body( index ) returns one.
    template<std::invocable<uint32_t> Body>
    void values( std::string_view name, uint32_t count, Body&& body ) {
        array( name, [ & ] {
            for( uint32_t index = 0; index < count; ++index ) {
                value( body( index ) );
            }
        } );
    }

    template<typename Value>
    void field( std::string_view name, Value const& content ) {
        key( name );
        value( content );
    }

    /// Leaves the member out when there is no value.
    template<typename Optional>
    void optionalField( std::string_view name, Optional const& content ) {
        if( content.has_value() ) {
            field( name, *content );
        }
    }

  private:
    using Compact = rapidjson::Writer<OutputFile>;
    using Pretty = rapidjson::PrettyWriter<OutputFile>;

    template<typename Value>
    void value( Value const& content ) {
        emit( [ & ]( auto& writer ) {
            if constexpr( std::is_same_v<Value, bool> ) {
                return writer.Bool( content );
            } else if constexpr( std::floating_point<Value> ) {
                return writer.Double( content );
            } else if constexpr( std::unsigned_integral<Value> ) {
                return writer.Uint64( content );
            } else {
                std::string_view const text = content;
                return writer.String( text.data(), static_cast<rapidjson::SizeType>( text.size() ) );
            }
        } );
    }

    void key( std::string_view name ) {
        emit( [ name ]( auto& writer ) {
            return writer.Key( name.data(), static_cast<rapidjson::SizeType>( name.size() ) );
        } );
    }

    template<typename Emission>
    void emit( Emission&& emission ) {
        std::visit( emission, writer_ );
    }

    std::variant<Compact, Pretty> writer_;
};

} // namespace bfgen
