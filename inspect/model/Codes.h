#pragma once

// Tables of kinds that have a code and a title, such as those of findings and notices.

#include "inspect/model/Names.h"

#include <span>
#include <strings.h>

namespace Bfri {

/// The kind with that code or title, ignoring case; null if there is none.
template<class Coded>
Coded const* codedAs( std::span<Coded const> all, String const& word ) {
    auto const found = std::find_if( all.begin(), all.end(), [ & ]( Coded const& one ) {
        return strcasecmp( one.code, word.c_str() ) == 0 || strcasecmp( one.title, word.c_str() ) == 0;
    } );
    return found == all.end() ? nullptr : &*found;
}

/// The codes, else the titles, that are most like a word; nearest first.
template<class Coded>
std::vector<String> codesLike( std::span<Coded const> all, String const& word ) {
    std::vector<String> codes;
    std::vector<String> titles;
    for( Coded const& one : all ) {
        codes.emplace_back( one.code );
        titles.emplace_back( one.title );
    }
    auto const near = nearest( codes, word );
    return near.empty() ? nearest( titles, word ) : near;
}

} // namespace Bfri
