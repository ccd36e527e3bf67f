#pragma once

// What there is to know of whether one configuration is sound.

#include "inspect/check/Findings.h"
#include "inspect/load/Fault.h"
#include "inspect/rows/Row.h"

namespace Bfri {

/// How many records of a collection of the model were looked at.
struct Count {
    char const* collection;
    char const* noun; ///< "match table"
    char const* nouns;
    std::size_t number;
};

/// One configuration, examined.
struct Checked {
    String switchConf;
    std::optional<Fault> fault;     ///< why it cannot be loaded; else empty
    std::vector<Count> counts = {}; ///< of one that loads
    std::vector<Finding> findings = {};
};

/// The JSON object of a fault.
Row rowOf( Fault const& fault );

/// The JSON object of one configuration.
Row rowOf( Checked const& checked );

/// Those of the context files, and of every kind of record that is counted.
std::vector<Count> countsOf( Configuration const& configuration );

} // namespace Bfri
