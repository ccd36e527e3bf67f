#pragma once

// An action and its table, as people name one of several that have the name: "permit of ipv4_acl".

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

/// The places of the actions that are meant by 'ACTION of TABLE': those of exactly these names in any reading
/// of the word; else those of one action and table whose names end so. Of several such a Failure of status no
/// with a word for each.
std::vector<U32> actionsMeant( BfResourceInfo::BfResourceParser const& parser, String const& word );

/// What to type for each of some actions, other words for others: 'NAME of TABLE'; where several have both,
/// with the handle for the name. In byte order.
std::vector<String> wordsForActions( std::vector<BfActionInfo const*> const& actions );

/// Where the word is that of a known action and of a table that does not have it, a Failure of status no with
/// words for those that do.
void refuseTableOf( BfResourceInfo::BfResourceParser const& parser, String const& word );

} // namespace Bfri
