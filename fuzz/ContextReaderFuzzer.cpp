// Any bytes as a text for the reader of context files, in buffers of several sizes. Verdict, place and
// document must be those of RapidJSON's own reader, without the members that no pass reads.

#include "fuzz/JsonMutator.h"
#include "fuzz/Target.h"
#include "tests/support/ContextReading.h"

#include <algorithm>
#include <string>

using namespace Context;

namespace {

/// A text in memory as a file.
class TextFile : public InputFile {
  public:
    explicit TextFile( std::string_view text ) : rest_( text ) {}

    String open( String const& ) override { return {}; }
    std::uint64_t sizeOnDisk() override { return rest_.size(); }
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

bool nestsDeep( std::string const& text ) {
    auto const opens = []( char c ) { return c == '[' || c == '{'; };
    return std::count_if( text.begin(), text.end(), opens ) > static_cast<int>( Depth::maximum );
}

} // namespace

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    std::string const text( reinterpret_cast<char const*>( data ), size );
    if( nestsDeep( text ) )
        return 0; // there they differ
    Support::Reading const expected = Support::plainReading( text );
    for( std::size_t const bufferSize : { std::size_t{ 1 }, 2 + size % 61, std::size_t{ 4096 } } ) {
        TextFile file( text );
        require( Support::contextReading( file, bufferSize ) == expected, "not as the plain reader" );
    }
    return 0;
}

std::size_t LLVMFuzzerCustomMutator( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                     unsigned seed ) {
    // Mostly bytewise: it is the syntax that matters here.
    return seed % 8 == 0 ? JsonMutator( memberNames ).mutate( data, size, maxSize, seed / 8 )
                         : LLVMFuzzerMutate( data, size, maxSize );
}
