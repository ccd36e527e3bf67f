#pragma once

// Compares the fields of records that two models have, and counts what is folded instead of listed.

#include "inspect/diff/Comparison.h"

#include <map>
#include <unordered_map>

namespace Bfri {

/// Whether two values are the same, handles by their numbers.
inline bool same( Value const& a, Value const& b ) { return !( a < b ) && !( b < a ); }

/// Which name stands behind which handle in one model, which outlives this.
class Referents {
  public:
    explicit Referents( BfResourceInfo::BfResourceParser const& parser );

    /// The name of the table that bears the handle; null for none.
    String const* nameOf( Hex handle ) const;
    /// The handle with that name; absent for 0, which stands for nothing.
    Value standsFor( Hex handle ) const;
    List standFor( List const& handles ) const;

  private:
    BfResourceInfo::BfResourceParser const& parser_;
    std::unordered_map<U32, String const*> unplaced_;
};

/// Of all kinds, so that a handle counts once.
class FieldComparer {
  public:
    FieldComparer( Configuration const& old, Configuration const& now );

    /// What differs between two records of one kind; only fields and move are set.
    ChangedRecord compare( RecordKind const& kind, Row const& from, Row const& to );

    Tally handles() const;
    std::vector<Renumbering> renumbered() const;
    Tally shifted() const { return shifted_; }

  private:
    void compareReference( ChangedRecord& record, Field const& from, Field const& to );
    void compareReferences( ChangedRecord& record, Field const& from, Field const& to );
    void compareHitBits( ChangedRecord& record, Row const& from, Row const& to );
    bool standForTheSame( Value const& old, Value const& now ) const;
    void countReference( Value const& old, Value const& now );
    void count( Renumbering const& handle );

    Referents const old_;
    Referents const now_;
    std::map<std::pair<U32, String>, Renumbering> handles_; ///< by the old number and the name
    Tally shifted_;
};

} // namespace Bfri
