#pragma once

// The records of one kind in one configuration. Most are equal in both that are compared: rows are made only
// of those that are asked for.

#include "inspect/diff/Programs.h"
#include "inspect/model/Relations.h"

namespace Bfri {

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

} // namespace Bfri
