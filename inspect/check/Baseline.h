#pragma once

// The findings of an earlier check, so that only new ones count.

#include "inspect/check/Findings.h"

#include <map>
#include <variant>

namespace Bfri {

/// A finding as an earlier answer has it.
struct KnownFinding {
    String code;
    String kind;
    String name;
    String message;
    String contextFile; ///< empty where none is known
    String switchConf;  ///< whose finding it is
};

/// The findings of an earlier check. What is known is known once: of two alike, the second is new.
class Baseline {
  public:
    explicit Baseline( std::vector<KnownFinding> findings );

    /// Marks those that are known: with the same message first, since several may be about one record; then
    /// with the same code, kind of record and name, since handles change with every compilation. Of a file
    /// that has a finding, only the last part of its path counts.
    void mark( std::vector<Finding>& findings, String const& switchConf );

    /// Those that no finding was like so far, in their order, without codes that are ignored.
    std::vector<KnownFinding> gone( std::vector<FindingKind const*> const& ignored ) const;

  private:
    using Key = std::tuple<String, String, String>;
    template<class Matches>
    bool take( Key const& key, Matches matches );

    std::vector<KnownFinding> findings_;
    std::vector<bool> taken_;
    std::map<Key, std::vector<std::size_t>> byKey_;
};

/// The findings in an answer of `check` in JSON; of anything else, what is wrong with it.
std::variant<Baseline, String> readBaseline( String const& path );

} // namespace Bfri
