#pragma once

// Whether a configuration is sound: its counts and findings, or why it cannot be loaded.

#include "inspect/check/Findings.h"
#include "inspect/load/Fault.h"
#include "inspect/rows/Row.h"

namespace Bfri {

/// How many records of one of the model's collections were checked.
struct Count {
    char const* collection;
    char const* noun; ///< "match table"
    char const* nouns;
    std::size_t number;
};

/// One configuration, checked.
struct Checked {
    String switchConf;
    std::optional<Fault> fault;     ///< why it cannot be loaded; empty if it can
    std::vector<Count> counts = {}; ///< empty if it cannot be loaded
    std::vector<Finding> findings = {};
};

/// The JSON object of a fault.
Row rowOf( Fault const& fault );

/// How many findings of a kind there are, and how many of them are known from an earlier check.
struct CodeCount {
    FindingKind const* kind;
    std::size_t number = 0;
    std::size_t known = 0;
};

/// Kind by kind, in the order of the findings.
std::vector<CodeCount> codeCountsOf( std::vector<Finding> const& findings );

/// The JSON object of one configuration; for a summary, with the numbers of findings instead of the findings.
Row rowOf( Checked const& checked, bool isSummary = false );

struct KnownFinding;

/// The findings of all configurations as a SARIF 2.1.0 log of one run, for code scanning: a rule for every
/// kind, a result for every finding with its place; a configuration that cannot be loaded is a notification.
/// With a baseline, each result says whether it is new; findings that are gone are results marked absent.
Row sarifOf( std::vector<Checked> const& checked, char const* version,
             std::vector<KnownFinding> const* gone );

/// The counts of context files, and of every kind of record that is counted.
std::vector<Count> countsOf( Configuration const& configuration );

} // namespace Bfri
