#pragma once

// The tables of a context file as they stand there: also what the model leaves out.

#include "cli/ContextText.h"

#include <optional>

namespace Bfri {

/// What bears a handle in a file, without the pipe's bits.
struct FileName {
    String name = {};
    std::optional<U32> handle = {};
};

/// An element of a list of references.
struct FileReference {
    String list; ///< "statistics_table_refs"
    U32 handle;
};

/// A table in the members that decide what the model makes of it. Of members of one name the first counts, as
/// it does for the library; what a table lacks is empty.
struct FileTable : FileName {
    String type = {};
    String direction = {};
    String howReferenced = {};
    String statisticsType = {};
    bool controllable = true;
    std::size_t staticEntries = 0;
    std::vector<FileReference> references = {};
    std::vector<String> repeated = {}; ///< names of members that some pass reads and that come again
    // Only of a table that is read in full.
    std::size_t stageTables = 0;
    std::vector<FileName> actions = {};

    /// Why the model has a match table's resource at most, but no record of it and of its actions; empty when
    /// it has. This is the rule of the library's reading of match tables.
    String whyLeftOut() const;
};

enum class Detail { brief, full };

/// Takes the table that comes.
FileTable fileTable( ContextText& text, Detail detail );

/// Hands the tables of a context file to `step`, in their order. Reads the file once, in linear time.
template<class Step>
void eachTable( String const& contextFile, Detail detail, Step step ) {
    ContextText text( contextFile );
    text.eachMember( [ & ]( String const& section ) {
        if( section == "tables" )
            text.eachElement( [ & ] { step( fileTable( text, detail ) ); } );
        else
            text.skip();
    } );
}

/// The members of one object that came already.
class SeenMembers {
  public:
    /// Whether some pass asks for members of that name, and one came before.
    bool isRepeated( String const& name );

  private:
    std::vector<char const*> seen_ = {}; // texts of the table of names
};

} // namespace Bfri
