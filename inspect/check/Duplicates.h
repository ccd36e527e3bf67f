#pragma once

#include "resourceinfo/parser/context/Survey.h"

#include <map>

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// A member that an object has more than once.
struct Duplicate {
    String path;               ///< from what is looked at: "stage_tables/1/size"
    Context::Place place = {}; ///< of the second, in a context file
    std::size_t times = 2;     ///< how often there is one
};

/// In the order in which the second of each comes.
using Duplicates = std::vector<Duplicate>;

/// Those of a context file.
struct FileDuplicates {
    explicit FileDuplicates( Context::FileSurvey const& file );

    std::map<U32, Duplicates> tables; ///< by index in "tables"
    Duplicates others;                ///< outside of tables
};

/// Those of the members of a switch configuration that are read; none of a file that cannot be read.
Duplicates duplicatesInSwitchConf( String const& path );

} // namespace Bfri
