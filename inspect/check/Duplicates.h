#pragma once

#include "resourceinfo/parser/context/Survey.h"

#include <map>

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// A member that an object has more than once.
struct Duplicate {
    String path;               ///< within the table or the file: "stage_tables/1/size"
    Context::Place place = {}; ///< of the second, in a context file
    std::size_t times = 2;     ///< how often it occurs
};

/// In the order of each member's second occurrence.
using Duplicates = std::vector<Duplicate>;

/// The duplicate members of a context file.
struct FileDuplicates {
    explicit FileDuplicates( Context::FileSurvey const& file );

    std::map<U32, Duplicates> tables; ///< by index in "tables"
    Duplicates others;                ///< outside the tables
};

/// The duplicates among the members of a switch configuration that are read; none if it cannot be read.
Duplicates duplicatesInSwitchConf( String const& path );

} // namespace Bfri
