#pragma once

// JSON values as the passes see them. Access is RapidJSON's, and so are the texts of its assertions; a
// failure goes the way of every assertion, and says which value was read, where, and by which operation.

#include "resourceinfo/model/Types.h"
#include "resourceinfo/parser/context/MemberNames.h"
#include "zel/Assert.h"
#include "zel/SourceLocation.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>
#include <string_view>

/// Reports a failed access at the place and value that were noted last.
namespace Context {
[[noreturn]] void jsonAssertionFailed( char const* condition );
}

// Must be in force wherever RapidJSON is included in the library, so this header comes before any of
// RapidJSON's.
#define RAPIDJSON_ASSERT( condition )                                                                        \
    ( ( condition ) ? static_cast<void>( 0 ) : ::Context::jsonAssertionFailed( #condition ) )
#include <rapidjson/document.h>

namespace Context {

/// Memory for RapidJSON, which does not look whether its own allocator found any: here a lack of it throws.
struct JsonAllocator {
    static constexpr bool kNeedFree = true;

    void* Malloc( std::size_t size ) { return size ? ::operator new( size ) : nullptr; }
    void* Realloc( void* former, std::size_t formerSize, std::size_t size ) {
        void* const block = Malloc( size );
        if( formerSize && size )
            std::memcpy( block, former, std::min( formerSize, size ) );
        Free( former );
        return block;
    }
    static void Free( void* block ) { ::operator delete( block ); }
};

// RapidJSON's types, with that memory.
using JsonPool = rapidjson::MemoryPoolAllocator<JsonAllocator>;
using JsonValue = rapidjson::GenericValue<rapidjson::UTF8<>, JsonPool>;
using JsonDocument = rapidjson::GenericDocument<rapidjson::UTF8<>, JsonPool, JsonAllocator>;

/// What this thread read last: a value, or the member of that name that it asked of it.
struct JsonAccess {
    JsonValue const* value = nullptr;
    char const* member = nullptr;
    Zel::SourceLocation where;
};

/// Cleared by ContextDocument, when it comes and when it goes.
JsonAccess& lastJsonAccess();

/// A value of the document: RapidJSON's operations, each noted before it is made. Cheap to copy; valid as
/// long as the document. The note is the thread's own, so that threads may read one document.
class Json {
    using Where = Zel::SourceLocation;

  public:
    /// The name of a member, with the place that asks for it. A name that memberNames lacks does not compile:
    /// files are read without such members.
    struct Member {
        consteval Member( char const* memberName, Where place = Where::current() )
            : name( isMemberName( memberName ) ? memberName : throw "a name that memberNames lacks" ),
              where( place ) {}
        /// A name that is known at run time only; one that memberNames lacks is never there. Must outlive the
        /// next access.
        static Member named( char const* memberName, Where place = Where::current() ) {
            Member member( "name" );
            member.name = memberName;
            member.where = place;
            return member;
        }
        char const* name;
        Where where;
    };

    /// Goes over an array's elements.
    class Iterator {
      public:
        explicit Iterator( JsonValue const* value ) : value_( value ) {}
        Json operator*() const { return Json( *value_ ); }
        Iterator& operator++() {
            ++value_;
            return *this;
        }
        friend bool operator==( Iterator const& a, Iterator const& b ) { return a.value_ == b.value_; }

      private:
        JsonValue const* value_;
    };

    explicit Json( JsonValue const& value ) : value_( &value ) {}

    bool IsObject( Where where = Where::current() ) const { return note( where ).IsObject(); }
    bool IsArray( Where where = Where::current() ) const { return note( where ).IsArray(); }
    bool HasMember( Member member ) const { return note( member ).HasMember( member.name ); }
    Json operator[]( Member member ) const { return Json( note( member )[ member.name ] ); }

    Json operator[]( U32 index ) const { return Json( note( lastJsonAccess().where )[ index ] ); }
    U32 Size( Where where = Where::current() ) const { return note( where ).Size(); }
    Iterator begin( Where where = Where::current() ) const { return Iterator( note( where ).Begin() ); }
    Iterator end() const { return Iterator( value_->End() ); }

    /// The text to its first NUL; valid as long as the document.
    std::string_view GetString( Where where = Where::current() ) const { return note( where ).GetString(); }
    U32 GetUint( Where where = Where::current() ) const { return note( where ).GetUint(); }
    std::int64_t GetInt64( Where where = Where::current() ) const { return note( where ).GetInt64(); }
    bool GetBool( Where where = Where::current() ) const { return note( where ).GetBool(); }

    /// The text of a member, if there is such a member and it is a text. Not noted: for descriptions of a
    /// failure.
    std::optional<String> textOf( char const* member ) const;

  private:
    JsonValue const& note( Where where ) const {
        lastJsonAccess() = { value_, nullptr, where };
        return *value_;
    }
    JsonValue const& note( Member member ) const {
        lastJsonAccess() = { value_, member.name, member.where };
        return *value_;
    }

    JsonValue const* value_;
};

/// Adds the place of the last access in a document: a JSON pointer, "/tables/3/match_attributes", and the
/// member that was asked for, "units". Walks the document; for failures.
void locateLastAccess( Zel::InputPlace& place, JsonValue const& document );

} // namespace Context
