#pragma once

// How a file ends with one damage in it, for every value and every damage: a text that people review.

#include "tests/support/JsonTree.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace BfResourceInfo {

/// The step after which a JSON pointer goes on with another one, and that step: "/tables/3" is "/tables" and
/// "3".
std::pair<std::string, std::string> splitPointer( std::string const& pointer );

/// Whether a step of a JSON pointer is an index.
bool isIndex( std::string_view step );

/// A failure's position in a file as seen from a value: nothing for the value itself, even where it is
/// missing; "." is the value, ".." the object that it is in.
std::string seenFrom( std::string const& pointer, std::string const& position );

/// A paragraph for values of the same place, but for indexes, that end alike: the place, which values these
/// are unless they are all of that place, each outcome with its damages.
///
///     /tables/*/size (acl, lpm)
///       false: gone
///       loads: 0, 7
class OutcomeTable {
  public:
    /// For damages of a context file: its tables are called by their names.
    explicit OutcomeTable( Support::JsonTree const& file );

    /// Outcomes are told in the order of their first damage, places in that of theirs.
    void add( std::string const& pointer, std::string const& damage, std::string const& outcome );

    /// The paragraphs, with an empty line after each.
    std::string text() const;

  private:
    struct Value {
        std::string pointer;
        std::string place;                                        // indexes as "*"
        std::string name;                                         // the indexes
        std::vector<std::pair<std::string, std::string>> damages; // by outcome
    };

    Value value( std::string const& pointer ) const;

    std::vector<std::string> tables_;
    std::vector<Value> values_;
};

/// The lines that only one of two tables has, each after the place that it is about.
std::string difference( std::string const& expected, std::string const& actual );

} // namespace BfResourceInfo
