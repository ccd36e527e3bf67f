#include "resourceinfo/parser/context/Json.h"

#include "resourceinfo/model/Source.h"

#include <utility>

namespace Context {

namespace {

/// A step of a JSON pointer, with its two special characters escaped.
String pointerStep( std::string_view name ) {
    String step = "/";
    for( char const c : name )
        step += c == '~' ? "~0" : c == '/' ? "~1" : String( 1, c );
    return step;
}

/// Writes the way from a value to one inside it into `path`; false, and nothing written, when it is not
/// inside.
bool findPath( JsonValue const& from, JsonValue const* to, String& path ) {
    if( &from == to )
        return true;
    auto const descend = [ & ]( JsonValue const& child, String const& step ) {
        auto const length = path.size();
        path += step;
        if( findPath( child, to, path ) )
            return true;
        path.resize( length );
        return false;
    };
    if( from.IsObject() ) {
        for( auto const& member : from.GetObject() ) {
            if( descend( member.value, pointerStep( member.name.GetString() ) ) )
                return true;
        }
    }
    if( from.IsArray() ) {
        for( rapidjson::SizeType i = 0; i < from.Size(); ++i ) {
            if( descend( from[ i ], pointerStep( std::to_string( i ) ) ) )
                return true;
        }
    }
    return false;
}

/// What the value should have been, by RapidJSON's condition on it.
char const* expectedBy( std::string_view condition ) {
    static constexpr std::pair<std::string_view, char const*> expectations[] = {
        { "IsObject()", "an object" },
        { "IsArray()", "an array" },
        { "IsString()", "a string" },
        { "IsBool()", "true or false" },
        { "data_.f.flags & kUintFlag", "an unsigned 32-bit number" },
        { "data_.f.flags & kInt64Flag", "a signed 64-bit number" },
        { "index < data_.a.size", "an array with more elements" },
        { "false", "an object that has this member" },
    };
    for( auto const& [ text, expected ] : expectations ) {
        if( text == condition )
            return expected;
    }
    return "";
}

} // namespace

JsonAccess& lastJsonAccess() {
    static thread_local JsonAccess access;
    return access;
}

void jsonAssertionFailed( char const* condition ) {
    Zel::SourceLocation const where = lastJsonAccess().where;
    Zel::AssertionSite{ ZEL_SOURCE, where.line(), where.function_name(), condition, expectedBy( condition ) }
        .fail();
}

std::optional<String> Json::textOf( char const* member ) const {
    if( !value_->IsObject() )
        return std::nullopt;
    auto const found = value_->FindMember( member );
    if( found == value_->MemberEnd() || !found->value.IsString() )
        return std::nullopt;
    return found->value.GetString();
}

void locateLastAccess( Zel::InputPlace& place, JsonValue const& document ) {
    JsonAccess const access = lastJsonAccess();
    String pointer;
    if( access.value && findPath( document, access.value, pointer ) )
        place.pointer = pointer;
    if( access.member )
        place.member = access.member;
}

} // namespace Context
