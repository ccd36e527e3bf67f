#pragma once

// The tables of a context file as they stand there: also what the model leaves out.

#include "inspect/load/FirstMembers.h"

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

/// A table in the members that decide what the model makes of it; what a table lacks is empty.
struct FileTable : FileName {
    String type = {};
    String direction = {};
    String howReferenced = {};
    String statisticsType = {};
    bool controllable = true;
    std::size_t staticEntries = 0;
    std::vector<FileReference> references = {};
    std::size_t stageTables = 0;           ///< over all units
    std::vector<std::int64_t> stages = {}; ///< their numbers, in their order; of those that have one
    std::vector<String> oddStages = {};    ///< behind the first, what some have instead of a stage
    std::vector<String> repeated = {};     ///< ways to members that come again, of those that some pass reads
    std::vector<FileName> actions = {};    ///< only of a table that is read in full

    /// Why the model has a match table's resource at most, but no record of it and of its actions; empty when
    /// it has. This is the rule of the library's reading of match tables.
    String whyLeftOut() const;
};

/// Takes the value that comes; the handle that it is.
std::optional<U32> handleOf( FirstMembers& text );

enum class Detail { brief, full };

/// Takes the table that comes.
FileTable fileTable( ContextText& text, Detail detail );

/// A context file as the passes see it.
FirstMembers passedMembers( ContextText& text );

/// Hands the tables of a context file to `step`, in their order. Reads the file once, in linear time.
template<class Step>
void eachTable( String const& contextFile, Detail detail, Step step ) {
    ContextText text( contextFile );
    FirstMembers file = passedMembers( text );
    file.eachMember( [ & ]( std::string_view section ) {
        if( section == "tables" )
            text.eachElement( [ & ] { step( fileTable( text, detail ) ); } );
        else
            text.skip();
    } );
}

} // namespace Bfri
