// Any bytes as a text for the reader of context files, in buffers of several sizes. Verdict, place and
// document must be those of RapidJSON's own reader, without the members that no pass reads.

#include "fuzz/JsonMutator.h"
#include "fuzz/Target.h"
#include "resourceinfo/parser/context/ContextReader.h"

#include <algorithm>
#include <string>
#include <vector>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace {

/// A text in memory as a file.
class TextFile : public InputFile {
  public:
    explicit TextFile( std::string_view text ) : rest_( text ) {}

    String open( String const& ) override { return {}; }
    int read( std::span<char> buffer ) override {
        std::size_t const count = rest_.copy( buffer.data(), buffer.size() );
        rest_.remove_prefix( count );
        return static_cast<int>( count );
    }
    bool rewind() override { return false; }
    bool isCompressed() override { return false; }
    String error() override { return {}; }
    void close() override {}

  private:
    std::string_view rest_;
};

struct Outcome {
    rapidjson::ParseErrorCode code;
    std::size_t offset;
    std::string document; // empty unless the text is good

    bool operator==( Outcome const& ) const = default;
};

template<class Document>
Outcome outcome( rapidjson::ParseResult const& result, Document const& document ) {
    if( result.IsError() )
        return { result.Code(), result.Offset(), "" };
    rapidjson::StringBuffer text;
    rapidjson::Writer writer( text );
    document.Accept( writer );
    return { result.Code(), 0, text.GetString() };
}

Outcome filtered( std::string_view text, std::size_t bufferSize ) {
    TextFile file( text );
    std::vector<char> buffer( bufferSize );
    GZFileReadStream stream( file, buffer );
    JsonDocument document;
    rapidjson::ParseResult result;
    auto parse = [ & ]( JsonDocument& ) {
        PruningFilter filter( document );
        ContextReader reader;
        result = reader.Parse( stream, filter );
        return !result.IsError();
    };
    document.Populate( parse );
    return outcome( result, document );
}

void prune( rapidjson::Value& value ) {
    if( value.IsArray() )
        std::for_each( value.Begin(), value.End(), prune );
    if( !value.IsObject() )
        return;
    for( rapidjson::SizeType i = 0; i < value.MemberCount(); ) {
        auto const member = value.MemberBegin() + i;
        if( !isMemberName( { member->name.GetString(), member->name.GetStringLength() } ) ) {
            value.EraseMember( member );
            continue;
        }
        prune( member->value );
        ++i;
    }
}

Outcome plain( std::string const& text ) {
    rapidjson::Document document;
    rapidjson::ParseResult const result = document.Parse( text.c_str() );
    prune( document );
    return outcome( result, document );
}

bool nestsDeep( std::string const& text ) {
    auto const opens = []( char c ) { return c == '[' || c == '{'; };
    return std::count_if( text.begin(), text.end(), opens ) > static_cast<int>( Depth::maximum );
}

} // namespace

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    std::string const text( reinterpret_cast<char const*>( data ), size );
    if( nestsDeep( text ) )
        return 0; // there they differ
    Outcome const expected = plain( text );
    for( std::size_t const bufferSize : { std::size_t{ 1 }, 2 + size % 61, std::size_t{ 4096 } } )
        require( filtered( text, bufferSize ) == expected, "not as the plain reader" );
    return 0;
}

std::size_t LLVMFuzzerCustomMutator( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                     unsigned seed ) {
    // Mostly bytewise: it is the syntax that matters here.
    return seed % 8 == 0 ? JsonMutator( memberNames ).mutate( data, size, maxSize, seed / 8 )
                         : LLVMFuzzerMutate( data, size, maxSize );
}
