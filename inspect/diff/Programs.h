#pragma once

// The programs of two configurations: which runs on which pipe, and whose the records are.

#include "inspect/diff/Comparison.h"

#include <unordered_map>

namespace Bfri {

using Context::FileSurvey;
using Context::SurveyedTable;

/// One context file, with its tables by name and by handle.
class P4Program {
  public:
    /// Of nothing: no program runs there.
    P4Program() = default;
    /// The survey outlives this.
    explicit P4Program( FileSurvey const& file );

    FileSurvey const* file() const { return file_; }
    /// The first table of a name or a handle; null for none.
    SurveyedTable const* named( std::string_view name ) const;
    SurveyedTable const* withHandle( U32 handle ) const;
    /// How many tables' names another program has, too.
    std::size_t namesSharedWith( P4Program const& other ) const;

  private:
    FileSurvey const* file_ = nullptr;
    std::unordered_map<std::string_view, SurveyedTable const*> byName_;
    std::unordered_map<U32, SurveyedTable const*> byHandle_;
};

/// All of a configuration, which outlives them.
class P4Programs {
  public:
    explicit P4Programs( Configuration const& configuration );

    std::vector<P4Program> const& all() const { return all_; }

    /// Positions of a kind's rows.
    using Positions = std::vector<std::size_t>;
    /// For each program the positions of its records among the rows of a kind that the library does not
    /// merge.
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

/// By the lowest pipe. Programs without pipes pair up in order.
std::vector<ProgramPair> pairsOf( P4Programs const& old, P4Programs const& now );

/// The pipes whose programs have other values, which only digests tell.
std::vector<PipeComparison> pipesOf( std::vector<ProgramPair> const& pairs, P4Programs const& old,
                                     P4Programs const& now );

} // namespace Bfri
