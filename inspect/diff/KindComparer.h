#pragma once

// Compares the records of one kind, program by program.

#include "inspect/diff/FieldComparer.h"
#include "inspect/diff/Join.h"
#include "inspect/diff/Owners.h"

#include <map>

namespace Bfri {

/// Two programs that run on the same pipes; or, for merged records, all programs together.
struct ProgramsOfPipes {
    ProgramPair pair;
    Renames renames = {};       ///< of tables
    Renames quantaRenames = {}; ///< of learn quantas
    ActionRenames actionRenames = {};
    bool findsRenames = false;
    bool isAnyTableTold = false;
};

/// The records of a kind in both configurations.
struct RowsOfKind {
    RecordKind const& kind;
    std::vector<Row> old;
    std::vector<Row> now;
};

class KindComparer {
  public:
    KindComparer( FieldComparer& fields, RowsOfKind rows, bool isOnly )
        : fields_( fields ),
          rows_( std::move( rows ) ),
          isOnly_( isOnly ),
          fates_( rows_.old.size() ),
          newFates_( rows_.now.size() ) {}

    /// Compares the records of two programs, or merged ones.
    void compare( ComparedPrograms& compared, ProgramsOfPipes& programs, Renames const& renames,
                  P4Programs::Positions const& old, P4Programs::Positions const& now );
    /// All that was found. The rows move into it.
    KindComparison result();

  private:
    /// What happened to a record on its pipes.
    struct Fate {
        U32 gone = 0; ///< pipes on which it is not in the other configuration
        bool isGone = false;
        bool isThere = false;
        bool differs = false;
        std::optional<OmissionReason> omitted = {}; ///< why it is left out in the other configuration
    };
    struct Found {
        ChangedRecord record;
        std::size_t old;
        std::size_t now;
        U32 pipes;
    };

    void addPair( ComparedPrograms& compared, ProgramsOfPipes& programs, Join::Pair const& pair );
    void addGone( std::vector<Fate>& fates, std::vector<Row> const& rows, ComparedPrograms& compared,
                  std::vector<std::size_t> const& positions, bool isNew );
    std::optional<OmissionReason> whyOmitted( Row const& row, ComparedPrograms const& compared,
                                              bool isNew ) const;
    static bool isStillPlaced( Row const& row, ComparedPrograms const& compared, bool isNew );
    void findDisplaced();
    static Row withPipes( Row row, U32 pipes );

    FieldComparer& fields_;
    RowsOfKind rows_;
    bool const isOnly_;
    std::vector<Fate> fates_;
    std::vector<Fate> newFates_;
    std::vector<Found> found_;
    std::vector<std::pair<Join::Pair, U32>> joined_; ///< with their pipes
    std::size_t programs_ = 0;                       ///< pairs of programs that were compared
    bool isReordered_ = false;
    bool isMerged_ = false;
};

} // namespace Bfri
