#pragma once

// Compares the records of one kind, program by program.

#include "inspect/diff/FieldComparer.h"
#include "inspect/model/Relations.h"

namespace Bfri {

/// The records of one kind in one configuration. Most are equal in both that are compared: rows are made only
/// of those that are asked for.
class KindRecords {
  public:
    /// The configuration and the owners must outlive this object.
    KindRecords( RecordKind const& kind, Configuration const& configuration, Owners const& owners );

    std::size_t size() const { return records_.size() + rows_.size(); }
    Identity identityOf( std::size_t position ) const;
    /// The row of the kind; of a resource also with its stages.
    Row rowOf( std::size_t position ) const;
    /// Whether two records of one kind have equal rows. It need not see that those of merged kinds do.
    bool equals( std::size_t position, KindRecords const& other, std::size_t otherPosition ) const;

    // Not for merged kinds:

    /// Its own handle, or its table's.
    U32 handleOf( std::size_t position ) const;
    /// Adds all handles in a record, its own ones and references.
    void addHandles( std::size_t position, std::vector<U32>& handles ) const;
    bool hasHitBits( std::size_t position ) const;

  private:
    using Record = std::variant<BfTableInfo const*, BfResource const*, BfTableCounterInfo const*,
                                BfTableMeterInfo const*, BfTableWredInfo const*, BfRegisterInfo const*,
                                BfLearnQuantaInfo const*, BfActionInfo const*, BfZelResource const*>;

    void addRecords( RecordKind const& kind );
    template<class Sequence>
    void addAll( Sequence const& records );
    void addTables( Configuration const& configuration );
    template<class OneRecord>
    Owners::Owner ownerOf( OneRecord const& record ) const;

    BfResourceParser const& parser_;
    Owners const& owners_;
    std::vector<Record> records_ = {};
    std::vector<SurveyedTable const*> tables_ = {}; ///< of resources
    std::vector<Row> rows_ = {};                    ///< of merged kinds, which have few
};

class KindComparer {
  public:
    KindComparer( FieldComparer& fields, RecordKind const& kind, KindRecords old, KindRecords now,
                  bool isOnly )
        : fields_( fields ),
          kind_( kind ),
          old_( std::move( old ) ),
          now_( std::move( now ) ),
          isOnly_( isOnly ) {}

    /// Compares the records of two programs at these positions.
    void compare( ProgramPair& programs, Positions const& old, Positions const& now );
    /// Compares merged records, or those of configurations without a survey.
    void compareAll( ProgramPair& programs );
    /// All that was found.
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
    /// The records of one configuration with their fates.
    struct Side {
        Side( KindRecords ofKind ) : records( std::move( ofKind ) ), fates( records.size() ) {}

        KindRecords records;
        std::vector<Fate> fates;
    };
    struct Joined {
        std::size_t old;
        std::size_t now;
        std::size_t programs; ///< which pair, from 1
        U32 pipes;
    };

    void addPair( ProgramPair& programs, std::size_t old, std::size_t now );
    void addGone( Side& side, ProgramPair& programs, Positions const& positions );
    std::optional<OmissionReason> whyOmitted( Identity const& identity, ProgramPair const& programs,
                                              bool isNew ) const;
    bool isStillPlaced( std::size_t position, ProgramPair const& programs, bool isNew ) const;
    void findDisplaced();
    void addAlone( Side const& side, std::vector<Row>& alone, std::vector<OmittedRecord>& omitted ) const;
    Row rowOf( Side const& side, std::size_t position, U32 pipes ) const;

    FieldComparer& fields_;
    RecordKind const& kind_;
    Side old_;
    Side now_;
    bool const isOnly_;
    std::vector<Joined> joined_ = {};
    /// By old position and pair of programs.
    std::map<std::pair<std::size_t, std::size_t>, ChangedRecord> changed_ = {};
    std::vector<U32> handles_ = {}; ///< of a record
    std::size_t programs_ = 0;      ///< pairs of programs that were compared
    bool isReordered_ = false;
    bool isMerged_ = false;
};

} // namespace Bfri
