#pragma once

// The contents of a parser's collections, taken from an input. Names and handles are few, so that they
// repeat.

#include "fuzz/Choices.h"
#include "resourceinfo/parser/BfResourceParser.h"

namespace BfResourceInfo {

inline void take( Choices& choices, String& text ) {
    static String const texts[] = { "a", "b", "name.b", "", String( "a\0b", 3 ), String( "a\0", 2 ) };
    U32 const choice = choices.below( 24 );
    text = choice < std::size( texts ) ? texts[ choice ] : "name." + std::to_string( choice );
}
inline void take( Choices& choices, U32& number ) {
    U32 const choice = choices.below( 24 );
    number = choice < 12 ? choice : choice < 22 ? choice << 28 | 8 : ~U32{} - choice % 2;
}
inline void take( Choices& choices, U8& number ) { number = static_cast<U8>( choices.byte() ); }
inline void take( Choices& choices, BfPipeMask& mask ) { mask = BfPipeMask( choices.below( 12 ) ); }
inline void take( Choices& choices, BfHeaderInfo& header ) {
    header = BfHeaderInfo( static_cast<U16>( choices.byte() * 257 ) );
}

template<class Value>
Value take( Choices& choices ) {
    Value value;
    take( choices, value );
    return value;
}

/// Changes a collection: of sixteen times nine by an insertion, six by a removal, once by the removal of all.
template<class Insert, class Remove, class RemoveAll>
void change( U32 sixteenth, Insert insert, Remove remove, RemoveAll removeAll ) {
    if( sixteenth < 9 )
        insert();
    else if( sixteenth < 15 )
        remove();
    else
        removeAll();
}

} // namespace BfResourceInfo
