#pragma once

#include "vessa/Types.h"

#include <ostream>
#include <string_view>
#include <vector>

namespace Bfri {

using Vessa::String;

/// The names that end in a suffix, which begins at a dot or right behind one: "ipv4.lpm" has "lpm" and
/// ".lpm", not "pm". Each once, in byte order.
std::vector<String> namesEndingIn( std::vector<String> const& names, std::string_view suffix );

/// The names that someone who wrote a word may have meant: close to it as a whole or in as many parts at
/// their end as the word has, or with the word in them. Nearest first, at most five.
std::vector<String> nearest( std::vector<String> const& names, std::string_view word );

/// What names belong to, for messages.
struct Named {
    char const* one;    ///< "match table"
    char const* many;   ///< "tables"
    char const* lister; ///< the command that lists them
};

/// The one of the names that a word means: itself, or the only one that ends in it. Else a Failure of status
/// no, with the names that it may have meant.
String meantName( std::vector<String> const& names, String const& word, Named const& named );

/// Says on err, where several of the names are this one, that the first record counts.
void noteSeveral( std::vector<String> const& names, String const& name, char const* many, std::ostream& err );

} // namespace Bfri
