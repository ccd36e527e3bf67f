#pragma once

// What a miss in the model may be about: what its context file has, but the model leaves out.

#include "inspect/model/Configuration.h"
#include "inspect/rows/Row.h"

#include <optional>

namespace Bfri {

/// What the model lacks of a table of a context file: its record and its actions; of a match table on no
/// stage the counters, meters and registers that it lists; of another table on no stage what has its handle.
enum class Omitted { record, references, handle };

/// A table that the model lacks something of, or an action of a match table that is left out.
struct Omission {
    String contextFile;
    Omitted omitted;
    String type; ///< of the table, as the file says: "match", "stateful"
    String table;
    String action;             ///< empty where it is the table itself
    std::optional<U32> handle; ///< as the model would have it
    String reason;
    bool isOwner = false; ///< of a record that was asked for
};

using Omissions = std::vector<Omission>; ///< in the order of the files

/// Without its end: `context.json has the match table "acl", which the model leaves out: it has ...`; of an
/// owner `context.json has it with the match table ...`.
String sentenceOf( Omission const& omission );

/// A sentence for each, with semicolons between.
String sentencesOf( Omissions const& all );

/// The same for machines.
List valuesOf( Omissions const& all );

/// Why the model has a match table's resource at most, but no record of it and of its actions; empty when it
/// has.
String whyOmitted( Context::SurveyedTable const& table );

/// Those of one configuration, which was loaded with a survey and outlives it.
class OmittedTables {
  public:
    explicit OmittedTables( Configuration const& configuration );

    /// The first match table of a name, or of the end of one from a dot on; an action also 'ACTION of TABLE'.
    std::optional<Omission> named( String const& word ) const;
    /// Those of a handle that is nobody's own in the model, as the model would have it.
    Omissions withHandle( U32 handle ) const;
    /// The match tables of a resource, counter, meter, WRED table or register of that name and own handle:
    /// those that list the handle or whose actions alone name it, or the one that it is the resource of.
    Omissions of( U32 handle, String const& name ) const;
    /// The own handle of what is not placed, in the file that another handle is of.
    std::optional<U32> ownHandle( String const& name, U32 handleInFile ) const;

  private:
    struct Table {
        Context::SurveyedTable const* survey;
        Context::FileSurvey const* file;
        Omitted omitted;
    };
    static Omission omission( Table const& table, Context::SurveyedAction const* action = nullptr );

    BfResourceInfo::BfResourceParser const& parser_;
    std::vector<Table> tables_ = {};
};

/// Why no record has a word for its name or handle: what has it is left out or of another kind, or a handle
/// lacks its 0x. A sentence without its end; empty where nothing is known.
String whyMissing( Configuration const& configuration, String const& word );

} // namespace Bfri
