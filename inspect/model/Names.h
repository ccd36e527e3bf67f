#pragma once

#include "inspect/model/RecordKinds.h"

#include <string_view>
#include <vector>

namespace Bfri {

/// What a word means among names.
struct Meaning {
    enum class Is { found, ambiguous, missing };
    Is is;
    /// The one that it means; all that end in it; or, where none does, the nearest, at most five.
    std::vector<String> names;
    std::size_t similar = 0; ///< of a missing one: how many names are like it, those above included
};

/// The name that is the word; else the only one that ends in it.
Meaning meaningOf( std::vector<String> const& names, String const& word );

/// The names that a word means: itself; else those that end in it. Each once, in byte order.
std::vector<String> namesMeant( std::vector<String> const& names, String const& word );

/// The names that end in a suffix, which begins at a dot or right after one: "ipv4.lpm" ends in "lpm" and
/// ".lpm", not in "pm". Each once, in byte order.
std::vector<String> namesEndingIn( std::vector<String> const& names, std::string_view suffix );

/// The names that someone who wrote a word may have meant, capital letters or not: those with the word as a
/// whole part between dots, then between dots and underscores; those close to it, as a whole or in as many
/// parts at their end as the word has; those that hold it anywhere. Nearest first, at most five.
std::vector<String> nearest( std::vector<String> const& names, std::string_view word );

/// A name and a kind of record with that name.
struct NameOfKind {
    String name;
    RecordKind const* kind;
};

/// Every name of the model with its kinds, in the order of the recordKinds, each pair once.
std::vector<NameOfKind> namesOfKinds( BfResourceInfo::BfResourceParser const& parser );

/// Every name of the model, once, in that order.
std::vector<String> allNames( BfResourceInfo::BfResourceParser const& parser );

} // namespace Bfri
