#pragma once

// What a miss in the model may be about: a match table that its context file has, but that the model leaves
// out, or an action of one.

#include "cli/FileTables.h"
#include "cli/Row.h"
#include "resourceinfo/BfResourceInfoIntf.h"

namespace Bfri {

/// A match table that is left out, or an action of it.
struct LeftOut {
    String contextFile;
    String table;
    String action;             ///< empty where it is the table itself
    std::optional<U32> handle; ///< as the model would have it
    String reason;
    bool isOwner = false; ///< of a record that was asked for
};

/// Without its end: `context.json has the match table "acl", which the model leaves out: it has ...`; of an
/// owner `context.json has it with the match table ...`.
String sentenceOf( LeftOut const& leftOut );

/// The same for machines; absent where there is none.
Value valueOf( std::optional<LeftOut> const& leftOut );

/// Those of one model, which outlives it. The first question reads the context files once more, in linear
/// time, and the first about names or handles once again, as actions are read only then. Each answer is the
/// first of the files in their order.
class LeftOutTables {
  public:
    explicit LeftOutTables( BfResourceInfo::BfResourceParser const& parser ) : parser_( parser ) {}

    /// Of a name, or the end of one from a dot on; an action also 'ACTION of TABLE'.
    std::optional<LeftOut> named( String const& word );
    /// Of a handle as the model would have it.
    std::optional<LeftOut> withHandle( U32 handle );
    /// The table behind a record that the model has: the one that the record belongs to, where the model has
    /// no record of it; where it knows none, the one that has the record's handle, or lists it.
    std::optional<LeftOut> behind( U32 handle, std::string_view table );

  private:
    struct Table : FileTable {
        String contextFile;
        U32 pipeBits;
    };
    std::vector<Table> const& tables( Detail detail );
    LeftOut leftOut( Table const& table, FileName const* action = nullptr ) const;

    BfResourceInfo::BfResourceParser const& parser_;
    std::vector<Table> tables_ = {};
    std::optional<Detail> read_ = {}; ///< that they were read in
};

/// Why no record has a word for its name or handle: what has it is left out or of another kind, or a handle
/// lacks its 0x. A sentence without its end; empty where nothing is known.
String whyMissing( BfResourceInfo::BfResourceParser const& parser, String const& word );

} // namespace Bfri
