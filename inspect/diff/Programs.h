#pragma once

// The programs of two configurations: which runs on which pipe, and which records belong to it.

#include "inspect/diff/Comparison.h"

#include <unordered_map>

namespace Bfri {

using Context::FileSurvey;
using Context::SurveyedTable;

/// One context file, with its tables by name and by handle.
class P4Program {
  public:
    /// No program.
    P4Program() = default;
    /// The survey must outlive this object.
    explicit P4Program( FileSurvey const& file );

    FileSurvey const* file() const { return file_; }
    /// The first table with a name or a handle; null for none.
    SurveyedTable const* named( std::string_view name ) const;
    SurveyedTable const* withHandle( U32 handle ) const;
    /// How many table names another program also has.
    std::size_t namesSharedWith( P4Program const& other ) const;

  private:
    FileSurvey const* file_ = nullptr;
    std::unordered_map<std::string_view, SurveyedTable const*> byName_;
    std::unordered_map<U32, SurveyedTable const*> byHandle_;
};

/// All programs of a configuration, which must outlive this object.
class P4Programs {
  public:
    explicit P4Programs( Configuration const& configuration );

    std::vector<P4Program> const& all() const { return all_; }

    /// Positions of a kind's rows.
    using Positions = std::vector<std::size_t>;
    /// For each program, the positions of its records among the rows of a kind; not for kinds that the
    /// library merges.
    std::vector<Positions> recordsOf( Kind kind ) const;

  private:
    void addPlaced( std::vector<Positions>& records ) const;

    Configuration const& configuration_;
    std::vector<P4Program> all_;
};

/// Two programs that run on the same pipes, by their positions; one of them may be missing.
struct ProgramPair {
    std::optional<std::size_t> old;
    std::optional<std::size_t> now;
    U32 pipes = 0; ///< mask
    bool isReplaced = false;
};

/// All pairs, ordered by lowest pipe. Programs without pipes pair up in order.
std::vector<ProgramPair> pairsOf( P4Programs const& old, P4Programs const& now );

/// The pipes whose programs differ, which only digests can tell.
std::vector<PipeComparison> pipesOf( std::vector<ProgramPair> const& pairs, P4Programs const& old,
                                     P4Programs const& now );

} // namespace Bfri
