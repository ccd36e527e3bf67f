#pragma once

#include "ostler/Ostler.h"
#include "resourceinfo/parser/context/Survey.h"
#include "zel/Assert.h"
#include "zel/Trace.h"

#include <optional>

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// Why a configuration cannot be used, in parts. Parts that do not apply are empty.
struct Fault {
    String file;                   ///< that cannot be used: the switch configuration or a context file
    bool inContextFile = false;    ///< which of the two it is
    String problem;                ///< why the file cannot be read, or what is wrong with its syntax
    std::optional<U32> line;       ///< of the problem, or of the value's end or start; from 1
    std::optional<U32> column;     ///< of the problem, in bytes, from 1
    String excerpt;                ///< of that line
    std::size_t caret = 0;         ///< bytes of the excerpt before the column
    std::optional<String> pointer; ///< JSON pointer to the value that was read last
    String member;                 ///< of that value, that was asked for
    std::optional<U32> tableIndex; ///< of the element of "tables" that it is in
    String table;                  ///< its name
    String expected;               ///< what should be there
    String found;                  ///< what is there
    String culprit; ///< whose value it is: the one at the pointer ("."), a member beside it (its name), or no
                    ///< single value (empty)
    std::optional<U32> handle;    ///< that leads to no table
    String hint;                  ///< what to do
    std::vector<String> reported; ///< what else the library reported
    String condition;             ///< the broken one, as written in the library's code
    String function;              ///< of the library, that requires the condition
    std::vector<Context::FileSurvey>
        files; ///< surveyed up to the fault, the file at fault last; empty without a survey
};

/// The fault that ended the reading of a switch configuration.
Fault faultOf( Ostler::Status const& status );

/// The fault that ended the loading, with what the library traced about it.
Fault faultOf( Zel::AssertionFailure const& failure, std::vector<Zel::TraceLine> const& traced );

/// Reads the file of a fault again and adds what is there: the value that was found, and its line; for a
/// problem with line and column, the excerpt. If the file does not have that place any more, nothing is
/// added. Linear in the file; keeps little of it.
void addEvidence( Fault& fault );

/// The missing handle in both notations: "77 (0x0000004d)"; empty when there is none.
String handleOf( Fault const& fault );

/// The condition with the function that requires it; empty if the condition says nothing.
String conditionOf( Fault const& fault );

/// The problem with its place: "line 2, column 14: Invalid value."; empty when there is none.
String problemOf( Fault const& fault );

/// "context file c.json", "switch configuration s.conf".
String subjectOf( Fault const& fault );

/// All of a fault in a sentence: what cannot be used, and why.
String sentenceOf( Fault const& fault );

} // namespace Bfri
