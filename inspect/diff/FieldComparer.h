#pragma once

// Compares the fields of records that are in both configurations, and counts what is folded, not listed.

#include "inspect/diff/Renames.h"

#include <map>
#include <unordered_set>

namespace Bfri {

/// Whether two values are the same, handles by their numbers.
inline bool same( Value const& a, Value const& b ) {
    return a.is.index() == b.is.index() && !( a < b ) && !( b < a );
}

/// Two programs whose records are compared, or all merged records.
struct ComparedPrograms {
    P4Program const& old;
    P4Program const& now;
    Renames const& renames;
    U32 pipes = 0;
    /// The tables of the old program that differ in the model, folded or not.
    std::unordered_set<String>& touched;
};

/// What the values of a field are, if they are not simply compared.
enum class FieldMeaning : std::uint8_t;

/// One for all kinds and programs, so that a handle counts once.
class FieldComparer {
  public:
    FieldComparer( Configuration const& old, Configuration const& now );

    /// What differs between two records of one kind; only fields and move are set.
    ChangedRecord compare( ComparedPrograms& programs, RecordKind const& kind, Row const& from,
                           Row const& to );

    Tally handles() const;
    /// Without handles that are only referenced, if all kinds are compared.
    std::vector<Renumbering> renumbered() const;
    Tally shifted() const { return shifted_; }

  private:
    struct Pair {
        ComparedPrograms& programs;
        RecordKind const& kind;
        Row const& from;
        Row const& to;
        ChangedRecord& record;
    };
    void readMeanings( RecordKind const& kind, Row const& row );
    void compareField( Pair const& pair, std::size_t field );
    void compareName( Pair const& pair, Field const& from, Field const& to ) const;
    void compareReference( Pair const& pair, Field const& from, Field const& to );
    void compareReferences( Pair const& pair, Field const& from, Field const& to );
    void compareHitBits( Pair const& pair );
    bool standForTheSame( ComparedPrograms const& programs, Value const& old, Value const& now ) const;
    void countReference( ComparedPrograms const& programs, Value const& old, Value const& now );
    void count( ComparedPrograms const& programs, Renumbering const& handle );

    /// Which name a handle belongs to in one configuration.
    class Referents {
      public:
        explicit Referents( Configuration const& configuration );
        /// The name of the table with the handle in a program, or in the model if there is no program; null
        /// for none.
        String const* nameOf( P4Program const& program, Hex handle ) const;
        /// The handle with its name; absent for 0 if no table has it.
        Value standsFor( P4Program const& program, Hex handle ) const;

      private:
        BfResourceInfo::BfResourceParser const& parser_;
        std::unordered_map<U32, String const*> unplaced_;
    };

    Referents const old_;
    Referents const now_;
    /// By the programs' pipes and the old number: whether it differs for any record now.
    std::unordered_map<std::uint64_t, bool> handles_;
    std::map<std::tuple<U32, U32, String>, Renumbering> renumbered_; ///< also by the name
    RecordKind const* kind_ = nullptr;                               ///< whose fields' meanings_ are
    std::vector<FieldMeaning> meanings_;
    Tally shifted_;
};

} // namespace Bfri
