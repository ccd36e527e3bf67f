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
    stream.tokenStarts();
    stream.Take(); // the quote
    StackStream<char> text( stack_ );
    ParseStringToStream<kParseDefaultFlags, UTF8<>, UTF8<>>( stream, text );
    if( HasParseError() )
        return;
    auto const length = static_cast<SizeType>( text.Length() - 1 ); // without the NUL after it
    char const* const string = text.Pop();
    if( !( isKey ? filter.Key( string, length, true ) : filter.String( string, length, true ) ) )
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
