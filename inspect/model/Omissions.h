#pragma once

// What context files have, but the model omits: the reason why something may not be found.

#include "inspect/model/Configuration.h"
#include "inspect/rows/Row.h"

#include <optional>

namespace Bfri {

/// What the model lacks of a table in a context file: its record and its actions; for a match table on no
/// stage, the counters, meters and registers that it lists; for another table on no stage, what has its
/// handle.
enum class Omitted { record, references, handle };

/// A table of which the model lacks something, or an action of an omitted match table. The survey is the
/// configuration's.
struct Omission {
    Context::FileSurvey const* file;
    Context::SurveyedTable const* table;
    Omitted omitted;
    Context::SurveyedAction const* action = nullptr; ///< null if it is the table itself
    bool isOwner = false;                            ///< of the record that was asked for
};

using Omissions = std::vector<Omission>; ///< in the order of the context files

/// A sentence without full stop: `context.json has the match table "acl", which the model leaves out: it has
/// ...`; for an owner `context.json has it with the match table ...`.
String sentenceOf( Omission const& omission );

/// A sentence for each, separated by semicolons.
String sentencesOf( Omissions const& all );

/// The same for machines.
List valuesOf( Omissions const& all );

/// Why the model has at most the resource of a match table, but no record of it or of its actions; empty if
/// the model has the record.
String whyOmitted( Context::SurveyedTable const& table );

/// The omitted tables of a configuration that was loaded with a survey and must outlive this object.
class OmittedTables {
  public:
    explicit OmittedTables( Configuration const& configuration );

    /// The first match table or action with a name, or with the end of one after a dot; an action also by
    /// 'ACTION of TABLE'.
    std::optional<Omission> named( String const& word ) const;
    /// The omissions with a handle, as it would be in the model, if nothing in the model has it as its own.
    Omissions withHandle( U32 handle ) const;
    /// The omitted match tables of a resource, counter, meter, WRED table or register with that name and own
    /// handle: those that list the handle, or whose actions alone name it, or the one whose resource it is.
    Omissions of( U32 handle, String const& name ) const;
    /// The own handle of an unplaced table, in the context file that another handle belongs to.
    std::optional<U32> ownHandle( String const& name, U32 handleInFile ) const;

  private:
    BfResourceInfo::BfResourceParser const& parser_;
    Omissions tables_ = {};
};

/// Why no record has a word as its name or handle: what has it is omitted or of another kind, or a handle
/// lacks its 0x. A sentence without full stop; empty if nothing is known.
String whyMissing( Configuration const& configuration, String const& word );

} // namespace Bfri
