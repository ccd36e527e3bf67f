#pragma once

namespace Bfri {

/// The kinds of record, in the order in which people see them. RecordKinds.h describes each.
enum class Kind {
    tables,
    resources,
    counters,
    meters,
    wreds,
    registers,
    learnQuantas,
    actions,
    headers,
    hashes,
    phvFields,
    handles, ///< placed tables by handle: the resources once more, with what they reference
};

} // namespace Bfri
