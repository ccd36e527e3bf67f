#include "resourceinfo/parser/context/DigestingReader.h"

#include "resourceinfo/parser/context/ContextReader.h"
#include "resourceinfo/parser/context/DigestingFilter.h"

namespace rapidjson {

/// Names and strings of all values, dropped or not.
template<>
template<>
inline void Context::ContextReader::ParseString<kParseDefaultFlags>( Context::GZFileReadStream& stream,
                                                                     Context::DigestingFilter& filter,
                                                                     bool isKey ) {
    auto const take = [ & ]( std::string_view text ) {
        auto const length = static_cast<SizeType>( text.size() );
        return isKey ? filter.Key( text.data(), length, true ) : filter.String( text.data(), length, true );
    };
    stream.tokenStarts();
    char const* const quote = stream.current();
    if( char const* const after = Context::PlainToken::afterString( quote ) ) {
        bool const goesOn = take( { quote + 1, after - 1 } ); // in the buffer: no need to copy it
        stream.takeUpTo( after );
        if( !goesOn )
            SetParseError( kParseErrorTermination, stream.Tell() );
        return;
    }
    stream.Take(); // the quote
    StackStream<char> text( stack_ );
    ParseStringToStream<kParseDefaultFlags, UTF8<>, UTF8<>>( stream, text );
    if( HasParseError() )
        return;
    std::size_t const length = text.Length() - 1; // without the NUL after it
    if( !take( { text.Pop(), length } ) )
        SetParseError( kParseErrorTermination, stream.Tell() );
}

} // namespace rapidjson

namespace Context {

rapidjson::ParseResult readWithDigests( GZFileReadStream& stream, PruningFilter& filter,
                                        ValueDigests& digests ) {
    DigestingFilter digesting( filter, digests );
    return ContextReader().Parse( stream, digesting );
}

} // namespace Context
