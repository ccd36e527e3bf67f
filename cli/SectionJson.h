#pragma once

// Sections of a context file as trees. What is not as it should be is passed over: the library judges that.

#include "cli/ContextText.h"

#include <cstdint>
#include <vector>

#include <rapidjson/document.h>

namespace Bfri {

using Json = rapidjson::Value;

/// The value that comes; null where it is no JSON.
rapidjson::Document treeOf( ContextText& text );

/// Null for none.
inline Json const* memberOf( Json const& value, char const* name ) {
    if( !value.IsObject() )
        return nullptr;
    auto const found = value.FindMember( name );
    return found == value.MemberEnd() ? nullptr : &found->value;
}

/// Hands each element of an array member to `step`.
template<class Step>
void forEachElement( Json const* list, Step step ) {
    if( list && list->IsArray() ) {
        for( Json const& element : list->GetArray() )
            step( element );
    }
}

/// A flexible header, with the bits of all its fields.
struct HeaderBits {
    String name;
    std::uint64_t bits;
};

HeaderBits headerBitsOf( Json const& header );

/// Those of a context file, in its order.
std::vector<HeaderBits> headersOf( String const& contextFile );

} // namespace Bfri
