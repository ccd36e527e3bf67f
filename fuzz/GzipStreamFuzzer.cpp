// Any bytes as a compressed context file. The stream must give the characters that the format says, and the
// load what it gives for these characters in a plain file. The mutator changes what is packed, and packs it
// again.

#include "fuzz/GzipMutator.h"
#include "fuzz/GzipText.h"
#include "fuzz/Load.h"
#include "fuzz/Target.h"
#include "resourceinfo/parser/context/GZFileReadStream.h"

#include <vector>

using namespace Context;

namespace {

constexpr std::size_t longestText = 1 << 20;
constexpr std::string_view switchConf =
    R"({"devices":[{"pipelines":[{"context_file":"context.json.gz","pipes":[0]}]}]})";

/// Takes all characters through a buffer of that size, one by one and in runs by turns.
std::optional<std::string> streamed( String const& path, std::size_t bufferSize ) {
    auto const file = gzipFile();
    require( file->open( path ).empty(), "cannot open the file" );
    std::vector<char> buffer( bufferSize + GZFileReadStream::padding );
    GZFileReadStream stream( *file, buffer );
    std::string text;
    auto const isNul = []( auto c ) { return c == ByteScan::byte( '\0' ); };
    auto const append = [ & ]( std::string_view run ) { text += run; };
    while( stream.Peek() != '\0' ) {
        if( text.size() % 3 == 0 )
            stream.takeTo( isNul, append );
        else
            text += stream.Take();
        require( stream.Tell() == text.size(), "number of characters taken" );
    }
    stream.drain();
    return stream.failed() ? std::nullopt : std::optional( text );
}

/// The stream ends, for its readers, at a NUL.
void checkStream( String const& path, std::optional<std::string> const& text, std::size_t bufferSize ) {
    auto const taken = streamed( path, bufferSize );
    require( taken.has_value() == text.has_value(), "failure of the stream" );
    require( !text || *taken == text->substr( 0, text->find( '\0' ) ), "characters of the stream" );
}

} // namespace

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    static FuzzFolder const folder;
    static String const configuration = folder.write( "switch.conf", switchConf.data(), switchConf.size() );
    std::span const bytes( data, size );
    auto const text = unpacked( bytes, longestText );
    if( !text && ( hasRefusedCode( bytes ) || unpacked( bytes, 64 * longestText ) ) )
        return 0;
    String const path = folder.write( "context.json.gz", data, size );
    checkStream( path, text, 1 + size % 61 );
    checkStream( path, text, 4096 );
    String const words = load( configuration );
    require( text || words.find( ": can't read it: " ) != String::npos, "damage that is not told" );
    if( !isGzip( bytes ) || !text || text->starts_with( "\x1f\x8b" ) )
        return 0;
    folder.write( "context.json.gz", text->data(), text->size() );
    require( load( configuration ) == words, "not as the plain text" );
    return 0;
}

std::size_t LLVMFuzzerCustomMutator( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                     unsigned seed ) {
    return mutateGzip( data, size, maxSize, seed );
}
