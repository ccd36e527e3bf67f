#pragma once

// Names, and what words mean among them.

#include "inspect/model/RecordKinds.h"

#include <variant>

namespace Bfri {

/// What a word means among names.
struct Meaning {
    enum class Is { found, ambiguous, missing };
    Is is;
    /// Found: the name. Ambiguous: all names that end in the word. Missing: the nearest names, at most five.
    std::vector<String> names;
    std::size_t similar = 0; ///< if missing: how many names are like it, those above included
};

/// The name that equals the word; else the only one that ends in it.
Meaning meaningOf( std::vector<String> const& names, String const& word );

/// The names that a word means: the word itself; else those that end in it. Each once, in byte order.
std::vector<String> namesMeant( std::vector<String> const& names, String const& word );

/// The names that end in a suffix, which begins at a dot or right after one: "ipv4.lpm" ends in "lpm" and
/// ".lpm", not in "pm". Each once, in byte order.
std::vector<String> namesEndingIn( std::vector<String> const& names, std::string_view suffix );

/// The names that are most like a word, ignoring case: those with the word as a whole part between dots, then
/// between dots and underscores; those that differ from it by little, as a whole or in as many parts at their
/// end as the word has; those that contain it anywhere. Nearest first, at most five.
std::vector<String> nearest( std::vector<String> const& names, std::string_view word );

/// A name and a kind of record with that name.
struct NameOfKind {
    String name;
    RecordKind const* kind;
};

/// Every name of the model with its kinds, in the order of the recordKinds, each pair once.
std::vector<NameOfKind> namesOfKinds( BfResourceParser const& parser );

/// Every name of the model, once, in that order.
std::vector<String> allNames( BfResourceParser const& parser );

// An action with its table, as people tell actions with the same name apart: "permit of ipv4_acl".

/// One way to read an argument: names, or the ends of names.
struct ActionWord {
    String action; ///< or a handle
    String table;
};

/// Every way to read a word, as names may contain " of ", too; none without it.
std::vector<ActionWord> actionWordsIn( String const& word );

/// A word that means several records, and what to type for each.
struct SeveralRecords {
    RecordKind const* kind;
    std::size_t count;
    std::vector<String> words;
    bool tellApart = true; ///< each word means exactly one of them
};

/// What 'ACTION of TABLE' means: actions of the model that have one name and table, or none; or several.
using ActionsMeant = std::variant<std::vector<BfActionInfo const*>, SeveralRecords>;

/// The actions with exactly these names, in any reading of the word; else those whose names and tables' names
/// end in them.
ActionsMeant actionsMeant( BfResourceParser const& parser, String const& word );

/// What to type for each action, so that every word means one: 'NAME of TABLE', or with the handle in place
/// of the name if several actions have the same name and table. In byte order.
std::vector<String> wordsForActions( std::vector<BfActionInfo const*> const& actions );

/// If a word names a known action and a table that does not have it: words for the actions that may be meant,
/// at most five. Else empty.
std::vector<String> actionsLike( BfResourceParser const& parser, String const& word );

} // namespace Bfri
