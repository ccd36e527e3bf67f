#include "fuzz/GzipMutator.h"

#include "fuzz/GzipText.h"
#include "fuzz/JsonMutator.h"
#include "fuzz/Target.h"
#include "resourceinfo/parser/context/MemberNames.h"

std::size_t mutateGzip( std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed ) {
    auto text = unpacked( { data, size }, 8 * maxSize );
    if( seed % 4 == 0 || !text )
        return LLVMFuzzerMutate( data, size, maxSize );
    std::size_t const textSize = text->size();
    text->resize( textSize + maxSize );
    auto* const characters = reinterpret_cast<std::uint8_t*>( text->data() );
    text->resize(
        JsonMutator( Context::memberNames ).mutate( characters, textSize, text->size(), seed / 4 ) );
    std::size_t const cut = seed / 16 % 8 == 0 ? text->size() / 2 : text->size();
    int const level = static_cast<int>( seed / 128 % 10 );
    std::string file = packed( text->substr( 0, cut ), level );
    if( cut < text->size() )
        file += packed( text->substr( cut ), 9 - level );
    if( file.size() > maxSize )
        return LLVMFuzzerMutate( data, size, maxSize );
    return file.copy( reinterpret_cast<char*>( data ), maxSize );
}
