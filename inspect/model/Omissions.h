#pragma once

// What a miss in the model may be about: what its context file has, but the model leaves out.

#include "inspect/load/FileTables.h"
#include "inspect/rows/Row.h"
#include "resourceinfo/BfResourceInfoIntf.h"

namespace Bfri {

/// What the model lacks of a table of a context file: its record and its actions; of a match table on no
/// stage the counters, meters and registers that it lists; of another table on no stage what has its handle.
enum class Missing { record, references, handle };

/// A table that the model lacks something of, or an action of a match table that is left out.
struct LeftOut {
    String contextFile;
    Missing missing;
    String type; ///< of the table, as the file says: "match", "stateful"
    String table;
    String action;             ///< empty where it is the table itself
    std::optional<U32> handle; ///< as the model would have it
    String reason;
    bool isOwner = false; ///< of a record that was asked for
};

using LeftOuts = std::vector<LeftOut>; ///< in the order of the files

/// Without its end: `context.json has the match table "acl", which the model leaves out: it has ...`; of an
/// owner `context.json has it with the match table ...`.
String sentenceOf( LeftOut const& leftOut );

/// A sentence for each, with semicolons between.
String sentencesOf( LeftOuts const& all );

/// The same for machines.
List valuesOf( LeftOuts const& all );

/// Those of one model, which outlives it. The first question reads the context files once more, in linear
/// time, and the first about names or handles once again, as actions are read only then.
class LeftOutTables {
  public:
    explicit LeftOutTables( BfResourceInfo::BfResourceParser const& parser ) : parser_( parser ) {}

    /// The first match table of a name, or of the end of one from a dot on; an action also 'ACTION of TABLE'.
    std::optional<LeftOut> named( String const& word );
    /// Those of a handle that is nobody's own in the model, as the model would have it.
    LeftOuts withHandle( U32 handle );
    /// The match tables behind a resource, counter, meter, WRED table or register of that name and own
    /// handle: those that list the handle or whose actions alone name it, or the one that it is the resource
    /// of.
    LeftOuts behind( U32 handle, String const& name );
    /// The own handle of what is not placed, in the file that another handle is of.
    std::optional<U32> ownHandle( String const& name, U32 handleInFile );

  private:
    struct Table : FileTable {
        String contextFile;
        U32 pipeBits;
        Missing missing;
        String reason;

        bool has( FileName const& one, U32 asked ) const {
            return one.handle && ( *one.handle | pipeBits ) == asked;
        }
        bool lists( U32 asked ) const;
    };
    void read( String const& contextFile, U32 pipeBits, Detail detail );
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
