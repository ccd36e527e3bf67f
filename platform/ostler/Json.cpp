#include "ostler/Json.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <new>
#include <optional>

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

namespace Ostler {

namespace {

constexpr std::size_t maximumDepth = 100;

/// Memory for the reader, which does not look whether its own allocator found any: here a lack of it throws.
struct Allocator {
    [[maybe_unused]] static constexpr bool kNeedFree = true;

    void* Malloc( std::size_t size ) { return ::operator new( size ); }
    void* Realloc( void* former, std::size_t formerSize, std::size_t size ) {
        void* const block = Malloc( size );
        if( formerSize > 0 )
            std::memcpy( block, former, std::min( formerSize, size ) );
        Free( former );
        return block;
    }
    static void Free( void* block ) { ::operator delete( block ); }
};

using Reader = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, Allocator>;

/// Where the string literal whose closing quote is at that offset begins: quotes inside it follow a
/// backslash, and outside of literals there is none.
std::size_t stringStart( std::string_view text, std::size_t closingQuote ) {
    for( std::size_t i = closingQuote; i-- > 0; )
        if( text[ i ] == '"' && ( i == 0 || text[ i - 1 ] != '\\' ) )
            return i;
    return 0;
}

/// Where the number or word that ends before that offset begins.
std::size_t wordStart( std::string_view text, std::size_t end ) {
    auto const delimiter = text.substr( 0, end ).find_last_of( " \t\r\n,:[" );
    return delimiter == std::string_view::npos ? 0 : delimiter + 1;
}

/// Builds the tree from the reader's events.
class Builder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Builder> {
  public:
    Builder( std::string_view text, rapidjson::MemoryStream const& stream )
        : text_( text ), stream_( stream ) {}

    JsonValue takeRoot() { return std::move( root_ ); }
    /// The first byte of the container that is one level too deep.
    std::optional<std::size_t> tooDeep() const { return tooDeep_; }

    bool Null() { return addWord( JsonValue::Kind::null ); }
    bool Bool( bool ) { return addWord( JsonValue::Kind::boolean ); }
    bool RawNumber( char const* text, rapidjson::SizeType length, bool ) {
        std::string_view const digits( text, length );
        JsonValue& number = add( JsonValue::Kind::number, wordStart( text_, stream_.Tell() ) );
        char const* const end = digits.data() + digits.size();
        auto const [ rest, error ] = std::from_chars( digits.data(), end, number.number );
        number.isUnsigned32 = digits == "-0" || ( rest == end && error == std::errc() );
        return true;
    }
    bool String( char const* text, rapidjson::SizeType, bool ) {
        add( JsonValue::Kind::string, stringStart( text_, stream_.Tell() - 1 ) ).text = text;
        return true;
    }
    bool Key( char const* name, rapidjson::SizeType length, bool ) {
        open_.back()->members.push_back( { { name, length }, {} } );
        return true;
    }
    bool StartObject() { return open( JsonValue::Kind::object ); }
    bool StartArray() { return open( JsonValue::Kind::array ); }
    bool EndObject( rapidjson::SizeType ) { return close(); }
    bool EndArray( rapidjson::SizeType ) { return close(); }

  private:
    JsonValue& place() {
        if( open_.empty() )
            return root_;
        JsonValue& container = *open_.back();
        if( container.kind == JsonValue::Kind::object )
            return container.members.back().value;
        return container.items.emplace_back();
    }
    JsonValue& add( JsonValue::Kind kind, std::size_t offset ) {
        JsonValue& value = place();
        value.kind = kind;
        value.offset = offset;
        return value;
    }
    bool addWord( JsonValue::Kind kind ) {
        add( kind, wordStart( text_, stream_.Tell() ) );
        return true;
    }
    bool open( JsonValue::Kind kind ) {
        // The pointers in open_ hold: a container does not grow before the values in it are complete.
        open_.push_back( &add( kind, stream_.Tell() - 1 ) );
        if( open_.size() > maximumDepth )
            tooDeep_ = open_.back()->offset;
        return !tooDeep_;
    }
    bool close() {
        open_.pop_back();
        return true;
    }

    std::string_view text_;
    rapidjson::MemoryStream const& stream_;
    JsonValue root_;
    std::vector<JsonValue*> open_;
    std::optional<std::size_t> tooDeep_;
};

} // namespace

JsonValue const* JsonValue::member( std::string_view name ) const {
    auto const found =
        std::find_if( members.begin(), members.end(), [ & ]( Member const& m ) { return m.name == name; } );
    return found == members.end() ? nullptr : &found->value;
}

JsonValue parseJson( std::string_view text ) {
    rapidjson::MemoryStream stream( text.data(), text.size() );
    Builder builder( text, stream );
    Reader reader;
    // Numbers as texts: of a number with an exponent near 2^31 the reader computes an index out of bounds.
    auto const result = reader.Parse<rapidjson::kParseNumbersAsStringsFlag>( stream, builder );
    if( builder.tooDeep() )
        throw JsonError{ *builder.tooDeep(),
                         "more than " + std::to_string( maximumDepth ) + " levels of nesting" };
    if( result.IsError() )
        throw JsonError{ result.Offset(), rapidjson::GetParseError_En( result.Code() ) };
    if( stream.Tell() != text.size() )
        throw JsonError{ stream.Tell(), "unexpected NUL behind the configuration" };
    return builder.takeRoot();
}

} // namespace Ostler
