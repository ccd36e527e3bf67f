#pragma once

// Pairs of configurations, compared as a front end does.

#include "inspect/diff/Verdict.h"
#include "tests/inspect/Inputs.h"

/// Loads a configuration with digests, from a file that a test has written.
Bfri::Configuration loadedWithDigests( String const& path );

/// Context files "old.json" and "new.json".
Bfri::Comparison compared( String const& old, String const& now, Bfri::ComparisonScope const& scope = {} );

/// What a verdict notices besides that programs were edited, each as "BD101 table acl"; actions with the
/// table: "BD101 action permit of acl".
std::vector<String> noticesIn( Bfri::Verdict const& verdict );

/// Expects of the comparison of two configurations, and of the same the other way round, that they say the
/// same.
void expectMirrored( Bfri::Comparison const& there, Bfri::Comparison const& again );

/// A program with records of every kind, and with members that the library does not read.
Support::ContextBuilder editedProgram();
