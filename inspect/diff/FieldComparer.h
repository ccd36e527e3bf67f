#pragma once

// Compares the fields of records that are in both configurations, and counts what is folded, not listed.

#include "inspect/diff/Programs.h"

#include <map>

namespace Bfri {

/// Whether two values are the same, handles by their numbers.
inline bool same( Value const& a, Value const& b ) {
    return a.is.index() == b.is.index() && !( a < b ) && !( b < a );
}

/// One for all kinds and programs, so that a handle counts once.
class FieldComparer {
  public:
    FieldComparer( Configuration const& old, Configuration const& now )
        : old_( old.parser() ), now_( now.parser() ) {}

    /// Whether numbers are the handles of the same records in both programs; then they are counted.
    bool countIfSame( ProgramPair const& programs, std::vector<U32> const& handles );
    /// Counts an equal range of hit bits.
    void countHitBits() { ++shifted_.all; }
    /// The two rows of a record of one kind, and what differs: fields and move.
    ChangedRecord compare( ProgramPair& programs, RecordKind const& kind, Row from, Row to );

    Tally handles() const;
    /// Without handles that are only referenced, if all kinds are compared.
    std::vector<Renumbering> renumbered() const;
    Tally shifted() const { return shifted_; }

  private:
    class RecordPair;

    void count( ProgramPair const& programs, Renumbering const& handle );

    BfResourceParser const& old_;
    BfResourceParser const& now_;
    /// By the programs' pipes and the old number: whether it differs for any record now.
    std::unordered_map<std::uint64_t, bool> handles_;
    std::map<std::tuple<U32, U32, String>, Renumbering> renumbered_; ///< by old number, pipes and name
    Tally shifted_;
};

} // namespace Bfri
