#pragma once

// What `bfri check` found of one configuration, for people and for machines.

#include "cli/terminal/Streams.h"
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

/// The lines of one configuration. Of many findings of one kind a terminal gets the first few.
void print( Checked const& checked, Streams const& io );

} // namespace Bfri
