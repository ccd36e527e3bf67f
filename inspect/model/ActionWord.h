#pragma once

// An action with its table, as people tell actions with the same name apart: "permit of ipv4_acl".

#include "resourceinfo/parser/BfResourceParser.h"

#include <vector>

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// One way to read an argument: names, or the ends of names.
struct ActionWord {
    String action; ///< or a handle
    String table;
};

/// Every way to read a word, as names may contain " of ", too; none without it.
std::vector<ActionWord> actionWordsIn( String const& word );

/// What 'ACTION of TABLE' means.
struct ActionsMeant {
    std::vector<U32> places;   ///< in the model's actions; none if the word means none
    std::vector<String> words; ///< unless all have one name and table: what to type for each
};

/// The actions with exactly these names, in any reading of the word; else those whose names and tables' names
/// end in them.
ActionsMeant actionsMeant( BfResourceInfo::BfResourceParser const& parser, String const& word );

/// What to type for each action, so that every word means one: 'NAME of TABLE', or with the handle in place
/// of the name if several actions have the same name and table. In byte order.
std::vector<String> wordsForActions( std::vector<BfActionInfo const*> const& actions );

/// If a word names a known action and a table that does not have it: words for the actions that may be meant,
/// at most five. Else empty.
std::vector<String> actionsLike( BfResourceInfo::BfResourceParser const& parser, String const& word );

} // namespace Bfri
