#pragma once

#include "vessa/Types.h"

#include <functional>
#include <ostream>
#include <string_view>
#include <vector>

namespace Bfri {

using Vessa::String;

/// The names that end in a suffix, which begins at a dot or right behind one: "ipv4.lpm" has "lpm" and
/// ".lpm", not "pm". Each once, in byte order.
std::vector<String> namesEndingIn( std::vector<String> const& names, std::string_view suffix );

/// The names that a word means: itself; else those that end in it; else those that a terminal shows so. Each
/// once, in byte order.
std::vector<String> namesMeant( std::vector<String> const& names, String const& word );

/// The names that someone who wrote a word may have meant: close to it as a whole or in as many parts at
/// their end as the word has, or with the word in them, capital letters or not. Nearest first, at most five.
std::vector<String> nearest( std::vector<String> const& names, std::string_view word );

/// What names belong to, for messages.
struct Named {
    char const* one;    ///< "match table"
    char const* many;   ///< "tables"
    char const* lister; ///< the command that lists them
};

/// The one of the names that a word means, where that is one. Else a Failure of status no, with the names
/// that it may have meant, or, when no name ends in it, with the reason that `whyMissing` knows, if any.
String meantName(
    std::vector<String> const& names, String const& word, Named const& named,
    std::function<String()> const& whyMissing = [] { return String(); } );

/// Says on err, where several of the names are this one, that the first record counts.
void noteSeveral( std::vector<String> const& names, String const& name, char const* many, std::ostream& err );

} // namespace Bfri
