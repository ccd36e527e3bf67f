#pragma once

// An action and its table, as people name one of several actions of one name: "permit of ipv4_acl".

#include "resourceinfo/parser/BfResourceParser.h"

#include <vector>

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// One way to read a word: names, or the ends of names.
struct ActionWord {
    String action; ///< or a handle
    String table;
};

/// Every way, as names may have " of " in them, too; none of a word without it.
std::vector<ActionWord> actionWordsIn( String const& word );

/// What 'ACTION of TABLE' means.
struct ActionsMeant {
    std::vector<U32> places;   ///< in the model's actions; none where the word means none
    std::vector<String> words; ///< where they are not all of one name and table: what to type for each
};

/// The actions of exactly these names in any reading of the word; else those whose names and tables' names
/// end so.
ActionsMeant actionsMeant( BfResourceInfo::BfResourceParser const& parser, String const& word );

/// What to type for each of some actions, other words for others: 'NAME of TABLE'; where several have both,
/// with the handle in place of the name. In byte order.
std::vector<String> wordsForActions( std::vector<BfActionInfo const*> const& actions );

/// Where a word names a known action and a table that does not have it: words for the actions that may be
/// meant, at most five. Else empty.
std::vector<String> actionsLike( BfResourceInfo::BfResourceParser const& parser, String const& word );

} // namespace Bfri
