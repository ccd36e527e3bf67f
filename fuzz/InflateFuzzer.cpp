// Any bytes as a file, plain or gzip, through both inflaters. They must accept the same files, with the same
// characters; but for Huffman codes that only zlib refuses (see IsalFile.h).

#include "fuzz/GzipMutator.h"
#include "fuzz/GzipText.h"
#include "fuzz/Target.h"
#include "resourceinfo/parser/context/IsalFile.h"
#include "resourceinfo/parser/context/ZlibFile.h"

#include <vector>

using namespace Context;

namespace {

constexpr std::size_t longestText = 1 << 22;

struct Outcome {
    std::string text;
    std::string error;
    bool compressed = false;
};

template<class File>
Outcome outcomeOf( String const& path, std::size_t pieceSize ) {
    File file;
    require( file.open( path ).empty(), "cannot open the file" );
    Outcome outcome;
    std::vector<char> piece( pieceSize );
    int count = 0;
    while( outcome.text.size() < longestText && ( count = file.read( piece ) ) > 0 )
        outcome.text.append( piece.data(), static_cast<std::size_t>( count ) );
    outcome.error = file.error();
    outcome.compressed = file.isCompressed();
    return outcome;
}

} // namespace

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    static FuzzFolder const folder;
    String const path = folder.write( "file", data, size );
    Outcome const zlib = outcomeOf<ZlibFile>( path, 4096 );
    for( std::size_t const pieceSize : { std::size_t{ 1 }, 2 + size % 61, std::size_t{ 4096 } } ) {
        Outcome const isal = outcomeOf<IsalFile>( path, pieceSize );
        require( isal.compressed == zlib.compressed, "plain for one, gzip for the other" );
        if( hasRefusedCode( { data, size } ) || isal.text.size() >= longestText )
            continue;
        require( isal.error.empty() == zlib.error.empty(), "refused by one, not by the other" );
        require( !isal.error.empty() || isal.text == zlib.text, "other characters" );
    }
    return 0;
}

std::size_t LLVMFuzzerCustomMutator( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                     unsigned seed ) {
    // The format matters here more than what is packed.
    return seed % 2 == 0 ? mutateGzip( data, size, maxSize, seed / 2 )
                         : LLVMFuzzerMutate( data, size, maxSize );
}
